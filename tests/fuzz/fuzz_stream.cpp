// SPDX-License-Identifier: MIT
#include "fuzz/StreamScenario.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    StreamScenario({data, size}).play();
    return 0;
}
