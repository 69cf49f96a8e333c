#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Installs a build into a folder, moves that elsewhere, and builds and runs a small host against it
# in one of the ways that hosts have. Usage: install.sh BUILD ROOT core|store|pkg-config|subdirectory
set -euo pipefail
build=$1 root=$2 way=$3
here=$root/tests/install
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/moved

# Runs a step, of which only a failure is shown.
step() {
  "$@" >"$work/log" 2>&1 || { cat "$work/log"; echo "failed: $*"; exit 1; }
}
# Runs a step that must fail and tell what matches.
refused() {
  local pattern=$1
  shift
  if "$@" >"$work/log" 2>&1; then echo "went well: $*"; exit 1; fi
  tr -s ' \n' ' ' <"$work/log" | grep -qE "$pattern" || { cat "$work/log"; echo "no $pattern"; exit 1; }
}
# Configures and builds the host of a folder.
build_host() {
  step cmake -G Ninja -S "$here/$1" -B "$work/$1" "${@:2}"
  step cmake --build "$work/$1"
}

if [ "$way" != subdirectory ]; then
  for component in Development Runtime; do
    step cmake --install "$build" --prefix "$work/first" --component $component
  done
  mv "$work/first" "$prefix"
  if grep -rIlF -e "$work/first" -e "$build" "$prefix"; then
    echo "these hold the place that they were installed into, or built in"
    exit 1
  fi
fi
package=(-DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Release)

case $way in
core)
  # Without SQLite and the store's other needs: their headers and pkg-config files are hidden.
  export -f step build_host
  export work here prefix
  hidden='for file in /usr/include/{sqlite3,zstd}.h /usr/include/nettle/sha2.h; do
    [ ! -e $file ] || mount --bind /dev/null $file; done'
  step unshare --mount --map-root-user bash -c "$hidden"'
    ! echo "#include <sqlite3.h>" | g++ -E -x c++ - | grep -q sqlite3_open || exit 1
    PKG_CONFIG_LIBDIR=/nowhere build_host core_static "$@"' host "${package[@]}"
  step "$work/core_static/host"
  find=(cmake -S "$work/find" -B "$work/find/build" "${package[@]}")
  mkdir "$work/find"
  try() { # ARGUMENTS PATTERN: what find_package says
    printf 'cmake_minimum_required(VERSION 3.25)\nproject(p CXX)\nfind_package(PimVobjMgr %s)\n' \
      "$1" >"$work/find/CMakeLists.txt"
    refused "$2" "${find[@]}"
  }
  try 'REQUIRED COMPONENTS nonsense' "there is no component 'nonsense'"
  try 'REQUIRED COMPONENTS static shared' 'exclude each other'
  try '0.1 REQUIRED' 'version: 0.2.0'
  try '0.3 REQUIRED' 'version: 0.2.0'
  ;;
store)
  build_host store_shared "${package[@]}"
  step "$work/store_shared/host" "$work/a.db" "$root/samples/friends.vcf"
  # The static one, by BUILD_SHARED_LIBS.
  sed 's/ shared)/)/' "$here/store_shared/CMakeLists.txt" >"$work/CMakeLists.txt"
  sed -i "s|\.\./|$here/|" "$work/CMakeLists.txt"
  step cmake -G Ninja -S "$work" -B "$work/static" "${package[@]}" -DBUILD_SHARED_LIBS=OFF
  step cmake --build "$work/static"
  step "$work/static/host" "$work/b.db" "$root/samples/friends.vcf"
  if ldd "$work/static/host" | grep -q pimstore; then echo "the static host loads pimstore"; exit 1; fi
  ;;
pkg-config)
  export PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name pimstore.pc)")
  flags() { pkg-config --cflags --libs "$@"; }
  # shellcheck disable=SC2046
  step g++ -std=c++20 "$here/StoreHost.cpp" -o "$work/host" $(flags pimstore)
  export LD_LIBRARY_PATH=$(pkg-config --variable=libdir pimstore)
  step "$work/host" "$work/a.db" "$root/samples/friends.vcf"
  step g++ -std=c++20 "$here/CoreHost.cpp" -o "$work/core" $(flags pimvobjmgr)
  step "$work/core"
  [ "$(flags --static pimstore | grep -c -- -lsqlite3)" = 1 ] || { flags --static pimstore; exit 1; }
  ;;
subdirectory)
  # Without what only the store and the program need.
  build_host subdirectory -DPIM_SOURCE="$root" -DPIMVOBJ_BUILD_STORE=OFF \
    -DCMAKE_DISABLE_FIND_PACKAGE_SQLite3=ON -DCMAKE_DISABLE_FIND_PACKAGE_RapidJSON=ON \
    -DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON
  step "$work/subdirectory/host"
  ;;
esac
