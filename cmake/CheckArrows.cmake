# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
cmake_minimum_required(VERSION 3.25)
# Reads every #include line of the tree against the folders that each folder may include. Fails on
# an arrow that isn't in the table. Run: cmake -DROOT=<project> -P cmake/CheckArrows.cmake
#
# A file belongs to the deepest folder above it that the table names. A header of the project is
# named from src or include/pim, or, for the program, as app/...; installed headers count as those
# of the folder that they mirror.
set(folders
  src/platform src/support src/stream src/records src/vcard src/vcalendar src/manager src/store
  src/store/sqlite src/store/postgres
  src/formats src/formats/vcard4 src/formats/icalendar src/formats/prepare src/formats/redact
  src/formats/charsets
  app app/album app/commands app/input app/output app/labels)
set(may_src/platform)
set(may_src/support src/platform)
set(may_src/stream src/support)
set(may_src/records src/support)
set(may_src/vcard src/stream src/records src/support)
set(may_src/vcalendar src/stream src/records src/support)
set(may_src/manager src/stream src/vcard src/vcalendar src/records src/support src/platform)
set(may_src/store src/records src/support src/platform)
set(may_src/store/sqlite src/store src/records src/support src/platform)
set(may_src/store/postgres src/store src/records src/support src/platform)
set(may_src/formats src/manager src/records src/stream src/support src/platform)
foreach(folder vcard4 icalendar prepare redact charsets)
  set(may_src/formats/${folder} src/formats ${may_src/formats})
endforeach()
list(APPEND may_src/formats/prepare src/formats/vcard4 src/formats/icalendar)
list(APPEND may_src/formats/redact src/formats/prepare)
list(APPEND may_src/formats/charsets src/formats/prepare)
set(may_app app/commands app/input app/output)
set(may_app/album app/output app/labels
  src/formats src/formats/vcard4 src/formats/icalendar src/support src/platform)
set(may_app/commands app/album app/input app/output app/labels
  src/formats src/formats/vcard4 src/formats/icalendar src/formats/prepare
  src/formats/redact src/formats/charsets src/support src/platform)
set(may_app/input app/output src/formats src/formats/prepare src/support src/platform)
set(may_app/output app/labels src/support src/platform)
set(may_app/labels src/support src/platform)

# The deepest folder of the table that holds the path, which is named from the project's root.
function(folder_of path result)
  set(best "")
  foreach(folder IN LISTS folders)
    string(LENGTH "${folder}" length)
    string(LENGTH "${best}" bestLength)
    string(FIND "${path}" "${folder}/" at)
    if(at EQUAL 0 AND length GREATER bestLength)
      set(best "${folder}")
    endif()
  endforeach()
  set(${result} "${best}" PARENT_SCOPE)
endfunction()

function(check_file file)
  file(RELATIVE_PATH name ${ROOT} ${file})
  folder_of("${name}" folder)
  file(STRINGS ${file} lines REGEX "^ *#include \"")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "^ *#include \"([^\"]*)\".*" "\\1" header "${line}")
    set(allowed ${folder} ${may_${folder}})
    if(header MATCHES "^pim/.*/")
      # The program meets the library through all of its installed headers.
      if(folder MATCHES "^app")
        continue()
      endif()
      string(REGEX REPLACE "^pim/" "src/" path "${header}")
    elseif(header MATCHES "^pim/" OR header STREQUAL "LabelFiles.h")
      continue()
    elseif(header MATCHES "^app/")
      set(path "${header}")
    else()
      set(path "src/${header}")
    endif()
    folder_of("${path}" target)
    if(NOT target OR NOT target IN_LIST allowed)
      message(SEND_ERROR "${name}: ${folder} may not include \"${header}\"")
    endif()
  endforeach()
endfunction()

file(GLOB_RECURSE files ${ROOT}/src/*.h ${ROOT}/src/*.cpp ${ROOT}/app/*.h ${ROOT}/app/*.cpp)
foreach(file IN LISTS files)
  check_file(${file})
endforeach()

# Installed headers include each other and nothing else of the project.
file(GLOB_RECURSE files ${ROOT}/include/*.h)
foreach(file IN LISTS files)
  file(STRINGS ${file} lines REGEX "^ *#include \"")
  foreach(line IN LISTS lines)
    if(NOT line MATCHES "\"pim/")
      message(SEND_ERROR "${file}: an installed header may not have ${line}")
    endif()
  endforeach()
endforeach()

# Client libraries stay in the folder of their store, and out of every installed header.
file(GLOB_RECURSE files ${ROOT}/include/*.h ${ROOT}/src/*.h ${ROOT}/src/*.cpp ${ROOT}/app/*)
foreach(file IN LISTS files)
  foreach(client "sqlite3:store/sqlite" "libpq:store/postgres" "libical:formats/icalendar")
    string(REGEX MATCH "^(.*):(.*)$" client ${client})
    file(STRINGS ${file} lines REGEX "^ *#include <${CMAKE_MATCH_1}")
    if(lines AND NOT file MATCHES "/src/${CMAKE_MATCH_2}/")
      message(SEND_ERROR "${file}: only src/${CMAKE_MATCH_2} may include ${CMAKE_MATCH_1}")
    endif()
  endforeach()
endforeach()
