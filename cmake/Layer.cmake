# SPDX-License-Identifier: MIT
# A folder under src/ is a layer and one static library of the folder's name. What a layer may include is what it links;
# the test "layers" holds every #include against the list in tests/layers.cmake.

add_library(ostrel_options INTERFACE)
target_include_directories(ostrel_options INTERFACE ${CMAKE_SOURCE_DIR}/src)
target_compile_options(ostrel_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor)
target_compile_definitions(ostrel_options INTERFACE
    QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII QT_NO_FOREACH OSTREL_VERSION="${PROJECT_VERSION}")
if(OSTREL_WERROR)
    target_compile_options(ostrel_options INTERFACE -Werror)
endif()
if(CMAKE_BUILD_TYPE STREQUAL "Release" AND NOT OSTREL_SANITIZE)
    target_compile_options(ostrel_options INTERFACE -fstack-protector-strong -Wformat -Werror=format-security)
    target_compile_definitions(ostrel_options INTERFACE _FORTIFY_SOURCE=2)
    target_link_options(ostrel_options INTERFACE -Wl,-z,relro,-z,now)
endif()
if(OSTREL_SANITIZE)
    target_compile_options(ostrel_options INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=undefined
        -fno-omit-frame-pointer)
    target_link_options(ostrel_options INTERFACE -fsanitize=address,undefined)
endif()
if(OSTREL_FUZZ)
    target_compile_options(ostrel_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# ostrel_layer(name SOURCES ... LINKS ...)
function(ostrel_layer name)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${arg_SOURCES})
    target_link_libraries(${name} PUBLIC ostrel_options ${arg_LINKS})
endfunction()

# ostrel_test(name SOURCES ... LINKS ... [SECONDS n]): one GoogleTest program, run without a display, each case a CTest
# test, which fails after so many seconds.
function(ostrel_test name)
    include(GoogleTest)
    cmake_parse_arguments(arg "" "SECONDS" "SOURCES;LINKS" ${ARGN})
    if(NOT arg_SECONDS)
        set(arg_SECONDS 120)
    endif()
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE ostrel_options ${arg_LINKS} GTest::gmock)
    gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_TIMEOUT 60
        PROPERTIES ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=UTC" TIMEOUT ${arg_SECONDS})
endfunction()
