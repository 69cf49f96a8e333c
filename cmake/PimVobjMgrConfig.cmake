# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
include(CMakeFindDependencyMacro)
find_dependency(SQLite3)
find_dependency(PkgConfig)
pkg_check_modules(nettle REQUIRED IMPORTED_TARGET nettle)
pkg_check_modules(zstd REQUIRED IMPORTED_TARGET libzstd)
include(${CMAKE_CURRENT_LIST_DIR}/PimVobjMgrTargets.cmake)
