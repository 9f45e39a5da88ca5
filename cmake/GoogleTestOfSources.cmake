# SPDX-License-Identifier: MIT
# The test framework from its sources, for systems that are built for from here: Debian has its libraries for
# itself only.
set(sources /usr/src/googletest)
add_library(googletest STATIC
    ${sources}/googletest/src/gtest-all.cc ${sources}/googlemock/src/gmock-all.cc)
target_include_directories(googletest SYSTEM
    PUBLIC ${sources}/googletest/include ${sources}/googlemock/include
    PRIVATE ${sources}/googletest ${sources}/googlemock)
add_library(googletest-main STATIC ${sources}/googletest/src/gtest_main.cc)
target_link_libraries(googletest-main PUBLIC googletest)
target_compile_options(googletest PRIVATE -w)
target_compile_options(googletest-main PRIVATE -w)
add_library(GTest::gtest ALIAS googletest)
add_library(GTest::gmock ALIAS googletest)
add_library(GTest::gtest_main ALIAS googletest-main)
