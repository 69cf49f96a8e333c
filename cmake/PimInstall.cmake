# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# What is installed, in four components: Runtime (shared libraries), PostgresRuntime (the one that
# needs libpq), Development (all that a host is built with) and Tools (the program and what belongs
# to it).
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/PimVobjMgr)
set(libraries pimvobjmgr)
foreach(library pimstore pimpgstore)
  if(TARGET ${library})
    list(APPEND libraries ${library})
  endif()
endforeach()
set(runtime_pimvobjmgr Runtime)
set(runtime_pimstore Runtime)
set(runtime_pimpgstore PostgresRuntime)
set(installs_shared OFF)
if(TARGET pimvobjmgr_shared)
  set(installs_shared ON)
endif()
set(installs_static ON)
if(BUILD_SHARED_LIBS AND NOT PIMVOBJ_BUILD_BOTH)
  set(installs_static OFF)
endif()

# One file of targets for each library and kind: the config reads those that a host asks for.
foreach(library IN LISTS libraries)
  if(installs_static)
    install(TARGETS ${library} EXPORT ${library}-static
            ARCHIVE COMPONENT Development FILE_SET HEADERS COMPONENT Development)
    install(EXPORT ${library}-static NAMESPACE PimVobjMgr:: DESTINATION ${package_dir}
            COMPONENT Development)
  endif()
  if(installs_shared)
    install(TARGETS ${library}_shared EXPORT ${library}-shared
            LIBRARY COMPONENT ${runtime_${library}} NAMELINK_COMPONENT Development
            RUNTIME COMPONENT ${runtime_${library}} ARCHIVE COMPONENT Development
            FILE_SET HEADERS COMPONENT Development)
    install(EXPORT ${library}-shared NAMESPACE PimVobjMgr:: DESTINATION ${package_dir}
            COMPONENT Development)
  endif()
endforeach()

configure_package_config_file(cmake/PimVobjMgrConfig.cmake.in PimVobjMgrConfig.cmake
  INSTALL_DESTINATION ${package_dir} NO_SET_AND_CHECK_MACRO NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(PimVobjMgrConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/PimVobjMgrConfig.cmake
              ${PROJECT_BINARY_DIR}/PimVobjMgrConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT Development)

# For pkg-config, the stores' dependencies are private where hosts link the shared library; named as
# libraries, since pkg-config would want their own files to be there even so.
if(IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" OR IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
  # Folders that are fixed don't move with the prefix.
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
  set(pc_libdir ${CMAKE_INSTALL_FULL_LIBDIR})
  set(pc_includedir ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
  file(RELATIVE_PATH pc_prefix /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(PREPEND pc_prefix "\${pcfiledir}/")
  set(pc_libdir "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
  set(pc_includedir "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
set(client_pimstore sqlite3)
set(client_pimpgstore pq)
set(client_module_pimstore sqlite3)
set(client_module_pimpgstore libpq)
set(pc_static "")
if(NOT installs_shared)
  set(pc_static " -DPIM_STATIC")
endif()
foreach(library IN LISTS libraries)
  if(installs_shared)
    set(pc_store_requires "")
    set(pc_store_private "Libs.private: -l${client_${library}} -lnettle -lzstd\n")
  else()
    set(pc_store_requires ", ${client_module_${library}}, nettle, libzstd")
    set(pc_store_private "")
  endif()
  configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
endforeach()

# With all that README links to.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md SECURITY.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development
        FILES_MATCHING PATTERN *.md PATTERN examples/*)
if(NOT PIMVOBJ_PACKAGES)  # which name the license in their own way
  install(FILES LICENSES/Apache-2.0.txt RENAME LICENSE
          DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development)
endif()
