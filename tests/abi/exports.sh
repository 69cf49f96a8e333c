#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# A shared library exports what the list names, demangled and one a line, and nothing else.
# Usage: exports.sh LIST LIBRARY; with --write first, the list is written anew. exports.sh --disjoint
# LIBRARY...: no two of them export the same.
set -euo pipefail

exports() {
  nm --dynamic --defined-only --demangle --format=just-symbols "$1" |
    sed 's/@.*//' | grep -v '^PIMVOBJMGR_' | LC_ALL=C sort -u
}

if [ "$1" = --write ]; then
  exports "$3" >"$2"
  exit
fi
if [ "$1" = --disjoint ]; then
  twice=$(for library in "${@:2}"; do exports "$library"; done | sort | uniq -d)
  [ -z "$twice" ] || { echo "exported by two libraries: $twice"; exit 1; }
  exit
fi
exports "$2" | diff -u "$1" - && exit
echo "$(basename "$2") exports other symbols than $1 has: hide what no header gives, or write the list
anew with exports.sh --write"
exit 1
