// SPDX-License-Identifier: MIT
#include "fuzz/DocumentScenario.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    DocumentScenario({data, size}).play();
    return 0;
}
