// SPDX-License-Identifier: MIT
#include SCENARIO_FILE // see CMakeLists.txt

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    SCENARIO({data, size}).play();
    return 0;
}
