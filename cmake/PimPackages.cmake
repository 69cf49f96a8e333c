# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Debian packages, one for each component; scripts/package.sh makes them.
set(abi ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(package_Runtime libpimvobjmgr${abi})
set(package_Development libpimvobjmgr-dev)
set(package_Tools pimvobj)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT ${PIMVOBJ_PACKAGER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL Runtime Development Tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1~deb12)
set(CPACK_DEBIAN_PACKAGE_SOURCE pimvobjmgr)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# What an installed library needs is read from it, as that of other packages.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
configure_file(packaging/debian/shlibs.in debian/shlibs @ONLY)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${PROJECT_BINARY_DIR}/debian/shlibs ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"vCard 2.1 and vCalendar 1.0 for applications - shared libraries
Moves contacts, events, to-dos and memos between an application's records
and vObject text, with an account of what isn't kept.
.
This package has the core library and that of the record store over SQLite.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${package_Runtime} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}), libsqlite3-dev, libzstd-dev, nettle-dev")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"vCard 2.1 and vCalendar 1.0 for applications - development files
Moves contacts, events, to-dos and memos between an application's records
and vObject text, with an account of what isn't kept.
.
This package has the headers, the static libraries, the files for CMake and
pkg-config, and the documentation for hosts.")

set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_TOOLS_DESCRIPTION
"import and export contacts and calendars of old phones
Takes vCard 2.1 and vCalendar 1.0 files into a store on this machine, tells
what isn't kept of them, and writes them again. Imports can be undone, and
the files that they came from are kept.")

# Policy wants a copyright and a changelog in each.
configure_file(packaging/debian/changelog.in debian/changelog @ONLY)
execute_process(COMMAND gzip -9nf changelog
                WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/debian COMMAND_ERROR_IS_FATAL ANY)
foreach(component IN LISTS CPACK_COMPONENTS_ALL)
  set(name ${package_${component}})
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${name})
  install(FILES packaging/debian/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name}
          COMPONENT ${component})
  install(FILES ${PROJECT_BINARY_DIR}/debian/changelog.gz RENAME changelog.Debian.gz
          DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${name} COMPONENT ${component})
  if(PIMVOBJ_PACKAGER MATCHES "@localhost>$")
    configure_file(packaging/debian/lintian-overrides.in debian/overrides/${name} @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/debian/overrides/${name}
            DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides COMPONENT ${component})
  endif()
endforeach()
# The pages for users of the program stand beside it, too.
install(FILES docs/getting-started.md docs/exit-statuses.md docs/mapping.md docs/account.md
              docs/history.md docs/record-dump.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_Tools} COMPONENT Tools)
include(CPack)
