# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# What every target of the project is built with: the language, the warnings, the sanitizers.
function(pim_target_defaults target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON
    POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  # g++ 12 warns of overlapping copies inside its own std::string (GCC bug 105329).
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  if(PIM_DEVELOPER)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(PIM_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${PIM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PRIVATE -fsanitize=${PIM_SANITIZE})
  endif()
endfunction()

# One test binary for each folder of sources; its cases are found when ctest runs.
function(pim_add_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  pim_target_defaults(${name})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
  target_compile_definitions(${name} PRIVATE PIM_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120)
endfunction()
