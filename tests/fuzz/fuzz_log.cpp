// SPDX-License-Identifier: MIT
#include "fuzz/LogScenario.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    LogScenario({data, size}).play();
    return 0;
}
