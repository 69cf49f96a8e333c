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
  # The same sources give the same bytes in any folder.
  target_compile_options(${target} PRIVATE $<$<CONFIG:Release>:
    -ffile-prefix-map=${PROJECT_BINARY_DIR}=build -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  # g++ 12 warns of overlapping copies inside its own std::string (GCC bug 105329).
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  # Of sources that are compiled as one, it takes all but the first for headers.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
  if(PIM_DEVELOPER)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(PIM_SANITIZE)
    target_compile_options(${target} PRIVATE
      -fsanitize=${PIM_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC -fsanitize=${PIM_SANITIZE})
  endif()
endfunction()

# For builds that compile several sources as one (CMAKE_UNITY_BUILD): those of one folder, which get
# along.
function(pim_unite_folders target)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source NORMALIZE OUTPUT_VARIABLE path)
    cmake_path(GET path PARENT_PATH folder)
    cmake_path(GET folder FILENAME name)
    set_source_files_properties(${source} TARGET_DIRECTORY ${target} PROPERTIES UNITY_GROUP ${name})
  endforeach()
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
endfunction()

# Whether shared libraries are made, by which the objects of the archives are compiled for exports:
# sanitizers leave symbols open that shared libraries may not have.
function(pim_makes_shared result)
  set(${result} OFF PARENT_SCOPE)
  if(BUILD_SHARED_LIBS OR PIMVOBJ_BUILD_BOTH AND NOT PIM_SANITIZE)
    set(${result} ON PARENT_SCOPE)
  endif()
endfunction()

# One of the libraries, as an archive. `building` is what its objects are compiled with for
# their exports (pim/Export.h), where a shared library is made of them too; hosts of the archive get
# PIM_STATIC.
function(pim_add_library name building)
  add_library(${name} STATIC)
  pim_target_defaults(${name})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src)
  pim_makes_shared(makes_shared)
  if(NOT makes_shared)
    set(building PIM_STATIC)
  endif()
  target_compile_definitions(${name}
    PRIVATE ${building}
    INTERFACE $<$<NOT:$<BOOL:$<TARGET_PROPERTY:PIM_MAY_BE_SHARED>>>:PIM_STATIC>)
  set_target_properties(${name} PROPERTIES
    PIM_MAY_BE_SHARED ${makes_shared}
    VERIFY_INTERFACE_HEADER_SETS ON)
endfunction()

# The shared library of the same name and objects, once all sources and headers of it are known.
# Further arguments are objects that it has besides.
function(pim_add_shared_library name)
  add_library(${name}_shared SHARED $<TARGET_OBJECTS:${name}> $<TARGET_OBJECTS:piminner> ${ARGN})
  get_target_property(folders ${name} HEADER_DIRS)
  get_target_property(headers ${name} HEADER_SET)
  target_sources(${name}_shared PUBLIC FILE_SET HEADERS BASE_DIRS ${folders} FILES ${headers})
  target_compile_features(${name}_shared PUBLIC cxx_std_20)
  # Below 1.0 each minor version is one that hosts are built for anew.
  set(abi ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
  set_target_properties(${name}_shared PROPERTIES
    LINKER_LANGUAGE CXX
    OUTPUT_NAME ${name}
    EXPORT_NAME ${name}
    VERSION ${PROJECT_VERSION}
    SOVERSION ${abi}
    BUILD_RPATH_USE_ORIGIN ON)
  # One library finds the other wherever they are put together; a distribution has a place for all.
  if(NOT PIMVOBJ_PACKAGES)
    set_target_properties(${name}_shared PROPERTIES INSTALL_RPATH "$<$<PLATFORM_ID:Linux>:$ORIGIN>")
  endif()
  if(UNIX AND NOT APPLE)
    # Of instances of the standard library's templates the compiler exports those that it makes.
    set(exports ${PROJECT_BINARY_DIR}/exports.map)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/exports.map.in ${exports} @ONLY)
    target_link_options(${name}_shared PRIVATE -Wl,--version-script=${exports} -Wl,-z,defs)
    set_target_properties(${name}_shared PROPERTIES LINK_DEPENDS ${exports})
  endif()
endfunction()

# What tests have that need the server which tests/postgres starts for all of them. Each build has a
# folder of its own for it, with a short name: a socket's path has 107 bytes at most.
string(SHA256 hash "${PROJECT_BINARY_DIR}")
string(SUBSTRING ${hash} 0 8 hash)
set(pim_postgres_folder /tmp/pimvobj-${hash})
set(pim_needs_postgres
  FIXTURES_REQUIRED postgres
  LABELS postgres
  ENVIRONMENT "PIM_TEST_POSTGRES=postgresql:///pim?host=${pim_postgres_folder}&user=pim")

# One test binary for each folder of sources; its cases are found when ctest runs. POSTGRES is for
# those that need a server.
function(pim_add_test name)
  cmake_parse_arguments(ARG "POSTGRES" "" "SOURCES;LIBRARIES" ${ARGN})
  if(ARG_POSTGRES)
    set(needs ${pim_needs_postgres})
  endif()
  add_executable(${name} ${ARG_SOURCES})
  pim_target_defaults(${name})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR})
  target_compile_definitions(${name} PRIVATE PIM_TEST_DATA="${PROJECT_SOURCE_DIR}/tests/data")
  # Half of the time that optimising a test takes would never come back.
  target_compile_options(${name} PRIVATE $<$<CONFIG:RelWithDebInfo>:-O0>)
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gtest GTest::gtest_main)
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 ${needs})
endfunction()
