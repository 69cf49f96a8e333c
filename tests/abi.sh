#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Compares a shared library with the dump of the binary interface of the last release. What breaks
# hosts that were built for that one is refused unless the soname has changed with it; what is only
# added, isn't. Usage: abi.sh ROOT BUILD LIBRARY; with --write first, the dump is written anew.
set -euo pipefail

write=
[ "$1" != --write ] || { write=1; shift; }
root=$1 build=$2 name=$3
library=$(readlink -f "$build/src/lib$name.so")
dump=$root/abi/$name.abi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Both sides are dumped in the same way, so that the same is left out of both.
now=$work/now.abi
(cd "$root" && abidw --suppressions abi/suppressions.ini --headers-dir include \
  --headers-dir "$build/include" --drop-private-types --exported-interfaces-only --no-corpus-path \
  --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed --no-write-default-sizes \
  --out-file "$now" "$library")
grep -q "<class-decl" "$now" || { echo "$library has no debug information to compare"; exit 1; }
if [ -n "$write" ]; then
  cp "$now" "$dump"
  exit
fi

soname() { sed -n "s/.*soname='\([^']*\)'.*/\1/p;q" "$1"; }
if [ "$(soname "$dump")" != "$(soname "$now")" ]; then
  echo "$(soname "$dump") has become $(soname "$now"): hosts are built anew"
  exit
fi
# Bit 8 of the status: something may be or is incompatible; lesser ones: the comparison failed.
status=0
abidiff --no-added-syms "$dump" "$now" >"$work/report" || status=$?
if [ $((status & 3)) -ne 0 ] || [ $((status & 12)) -ne 0 ]; then
  cat "$work/report"
  echo "$name breaks hosts of $(soname "$dump"): raise the minor version, or keep the interface"
  exit 1
fi
