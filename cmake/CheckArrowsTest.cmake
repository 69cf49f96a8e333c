# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
cmake_minimum_required(VERSION 3.25)
# Makes a small tree with one arrow after another and looks whether the check tells each that isn't
# in its table. Run: cmake -DROOT=<project> -DWORK=<folder> -P cmake/CheckArrowsTest.cmake
function(expect fails file include)
  file(REMOVE_RECURSE ${WORK})
  file(WRITE ${WORK}/${file} "#include ${include}\n")
  execute_process(COMMAND ${CMAKE_COMMAND} -DROOT=${WORK} -P ${ROOT}/cmake/CheckArrows.cmake
                  RESULT_VARIABLE result OUTPUT_QUIET ERROR_QUIET)
  if(result EQUAL 0 AND fails OR NOT result EQUAL 0 AND NOT fails)
    message(SEND_ERROR "${file} with ${include}: the check ended with ${result}")
  endif()
endfunction()

expect(FALSE src/store/deep/A.cpp "\"support/Ascii.h\"")
expect(TRUE src/store/deep/A.cpp "\"vcard/VCardWords.h\"")
expect(TRUE src/stream/A.h "\"pim/platform/Host.h\"")
expect(FALSE src/store/postgres/A.cpp "\"store/Database.h\"")
expect(TRUE src/store/postgres/A.cpp "\"store/sqlite/SqliteDatabase.h\"")
expect(TRUE src/store/sqlite/A.cpp "\"store/postgres/PostgresDatabase.h\"")
expect(TRUE src/store/A.cpp "\"store/postgres/PostgresDatabase.h\"")
expect(FALSE app/commands/A.cpp "\"app/output/Output.h\"")
expect(TRUE app/output/A.cpp "\"app/commands/Session.h\"")
expect(TRUE app/input/A.cpp "\"stream/VObjectParser.h\"")
expect(TRUE include/pim/records/A.h "\"support/Ascii.h\"")
expect(TRUE src/records/A.cpp "<sqlite3.h>")
expect(FALSE src/store/sqlite/A.cpp "<sqlite3.h>")
expect(TRUE src/store/postgres/A.cpp "<sqlite3.h>")
expect(FALSE src/store/postgres/A.cpp "<libpq-fe.h>")
foreach(folder src/store src/store/sqlite include/pim/store app/commands)
  expect(TRUE ${folder}/A.h "<libpq-fe.h>")
endforeach()
file(REMOVE_RECURSE ${WORK})
