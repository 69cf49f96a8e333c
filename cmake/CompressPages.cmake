# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Run by cpack for each package, once its files are in place.
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_DIRECTORY}/*/share/man/*.1)
foreach(page IN LISTS pages)
  execute_process(COMMAND gzip -9nf ${page} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
# Debian has completions of zsh in a place of its own.
file(GLOB_RECURSE functions ${CPACK_TEMPORARY_DIRECTORY}/*/share/zsh/site-functions/*)
foreach(function IN LISTS functions)
  string(REPLACE /site-functions/ /vendor-completions/ moved ${function})
  cmake_path(GET moved PARENT_PATH folder)
  cmake_path(GET function PARENT_PATH left)
  file(MAKE_DIRECTORY ${folder})
  file(RENAME ${function} ${moved})
  file(REMOVE_RECURSE ${left})
endforeach()
