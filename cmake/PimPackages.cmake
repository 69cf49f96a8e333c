# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Debian packages, one for each component; scripts/package.sh makes them. As Debian has it with
# libraries for several databases: the client of a server comes with a package of its own at run
# time, and one package for development has them all.
set(abi ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(package_Runtime libpimvobjmgr${abi})
set(package_PostgresRuntime libpimpgstore${abi})
set(package_Development libpimvobjmgr-dev)
set(package_Tools pimvobj)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT ${PIMVOBJ_PACKAGER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL Runtime PostgresRuntime Development Tools)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1~deb12)
set(CPACK_DEBIAN_PACKAGE_SOURCE pimvobjmgr)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# What an installed library needs is read from it, as that of other packages.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(this_version "(= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
# Which package has a library, for packages of programs that are linked with it.
set(libraries_Runtime libpimvobjmgr libpimstore)
set(libraries_PostgresRuntime libpimpgstore)
foreach(component Runtime PostgresRuntime)
  set(shlibs ${PROJECT_BINARY_DIR}/debian/${component}/shlibs)
  set(lines "")
  foreach(library IN LISTS libraries_${component})
    string(APPEND lines "${library} ${abi} ${package_${component}} (>= ${PROJECT_VERSION})\n")
  endforeach()
  file(CONFIGURE OUTPUT ${shlibs} CONTENT "${lines}" @ONLY)
  string(TOUPPER ${component} upper)
  set(CPACK_DEBIAN_${upper}_PACKAGE_CONTROL_EXTRA
    ${shlibs} ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
endforeach()

set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION
"vCard 2.1 and vCalendar 1.0 for applications - shared libraries
Moves contacts, events, to-dos and memos between an application's records
and vObject text, with an account of what isn't kept.
.
This package has the core library and that of the record store over SQLite.")

set(CPACK_DEBIAN_POSTGRESRUNTIME_PACKAGE_SECTION libs)
# What the stores and the core have of each other besides the headers may change with each release.
set(CPACK_DEBIAN_POSTGRESRUNTIME_PACKAGE_DEPENDS "${package_Runtime} ${this_version}")
set(CPACK_DEBIAN_POSTGRESRUNTIME_DESCRIPTION
"vCard 2.1 and vCalendar 1.0 for applications - PostgreSQL store
Moves contacts, events, to-dos and memos between an application's records
and vObject text, with an account of what isn't kept.
.
This package has the library of the record store in a PostgreSQL server.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
string(JOIN ", " CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${package_Runtime} ${this_version}" "${package_PostgresRuntime} ${this_version}"
  libpq-dev libsqlite3-dev libzstd-dev nettle-dev)
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
Takes vCard 2.1 and vCalendar 1.0 files into a store, which is a file or in a
PostgreSQL server, tells what isn't kept of them, and writes them again.
Imports can be undone, and the files that they came from are kept.")

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
              docs/history.md docs/record-dump.md docs/server.md docs/store.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_Tools} COMPONENT Tools)
include(CPack)
