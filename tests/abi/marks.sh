#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# What pim/Export.h makes of its marks: for hosts and builds of both kinds, here and on Windows.
# Usage: marks.sh COMPILER ROOT
set -euo pipefail

status=0
# marks EXPECTED DEFINES...: what stands for PIM_EXPORT | PIM_STORE_EXPORT |
# PIM_POSTGRES_EXPORT | PIM_HIDDEN.
marks() {
  local got
  got=$(printf '#include "pim/Export.h"\nPIM_EXPORT|PIM_STORE_EXPORT|PIM_POSTGRES_EXPORT|PIM_HIDDEN\n' |
    "$compiler" -E -P -x c++ -I"$root/include" "${@:2}" - | tail -n 1 | tr -d ' ')
  [ "$got" = "$1" ] || { echo "${*:2}: $got, not $1"; status=1; }
}
compiler=$1 root=$2
default='__attribute__((visibility("default")))'
hidden='__attribute__((visibility("hidden")))'
export='__declspec(dllexport)' import='__declspec(dllimport)'
for windows in -U_WIN32 -D_WIN32; do
  marks '|||' $windows -DPIM_STATIC
done
for building in UNKNOWN CORE STORE POSTGRES; do
  marks "$default|$default|$default|$hidden" -DPIM_BUILDING_$building
done
marks "$import|$import|$import|" -D_WIN32
marks "$export|$import|$import|" -D_WIN32 -DPIM_BUILDING_CORE
marks "$import|$export|$import|" -D_WIN32 -DPIM_BUILDING_STORE
marks "$import|$import|$export|" -D_WIN32 -DPIM_BUILDING_POSTGRES
exit $status
