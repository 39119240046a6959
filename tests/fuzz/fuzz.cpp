// SPDX-License-Identifier: MIT
#include SCENARIO_FILE // see CMakeLists.txt

using namespace ostrel;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    SCENARIO({data, size}).play();
    return 0;
}
