#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Compares a shared library with the dump of the binary interface of the last release. What breaks
# hosts that were built for that one is refused unless the soname has changed with it; what is only
# added, isn't. Usage: abi.sh ROOT BUILD NAME LIBRARY; with --write first, the dump is written anew.
set -euo pipefail

write=
[ "$1" != --write ] || { write=1; shift; }
root=$1 build=$2 name=$3 library=$4
dump=$root/abi/$name.abi
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# Both sides are dumped in the same way, so that the same is left out of both.
now=$work/now.abi
(cd "$root" && abidw --suppressions abi/suppressions.ini --headers-dir include \
  --headers-dir "$build/include" --drop-private-types --exported-interfaces-only --no-corpus-path \
  --no-comp-dir-path --no-show-locs --no-parameter-names --no-elf-needed --no-write-default-sizes \
  --out-file "$work/raw.abi" "$library")
# Where the sources lie is no part of it.
sed "s|path='[^']*/\\(include/pim/\\)|path='\\1|; s|path='[^']*/|path='|" "$work/raw.abi" >"$now"
grep -q "<class-decl" "$now" || { echo "$library has no debug information to compare"; exit 1; }
if [ "$name" = pimtypes ]; then
  # Each type of the headers, in full.
  missing=
  for type in $(cd "$root/include" && grep -rhE '^(class|struct|enum class|enum) [^;]*$' pim |
    sed -E 's/^(class|struct|enum class|enum) (PIM_[A-Z_]* )?([A-Za-z]*).*/\3/' | sort -u); do
    grep -E "<(class|enum)-decl name='$type('|&lt;)" "$now" | grep -vq "is-declaration-only" || missing+=" $type"
  done
  [ -z "$missing" ] || { echo "tests/abi/Types.cpp lacks types of the headers:$missing"; exit 1; }
fi
if [ -n "$write" ]; then
  cp "$now" "$dump"
  exit
fi

soname() { sed -n "s/.*soname='\([^']*\)'.*/\1/p;q" "$1"; }
if [ "$(soname "$dump")" != "$(soname "$now")" ]; then
  echo "$(soname "$dump") has become $(soname "$now"): hosts are built anew"
  exit
fi
if ! abidiff --no-added-syms "$dump" "$now" >"$work/report" 2>&1; then
  cat "$work/report"
  echo "$name breaks hosts of $(soname "$dump"): raise the minor version, or keep the interface"
  exit 1
fi
