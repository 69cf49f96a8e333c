#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Installs a build into a folder, moves that elsewhere, and builds and runs a small host against it
# in one of the ways that hosts have. Usage: install.sh BUILD ROOT core|store|pkg-config|subdirectory
set -euo pipefail
build=$(realpath "$1") root=$(realpath "$2") way=$3
here=$root/tests/install
version=$(sed -n 's/^project(.* VERSION \([0-9.]*\) .*/\1/p' "$root/CMakeLists.txt")
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

# try step|refused PATTERN ARGUMENTS...: a project that finds the package with each; -D... are given
# to it.
try() {
  local how=$1 pattern=$2 options=() argument
  rm -rf "$work/find"
  mkdir "$work/find"
  printf 'cmake_minimum_required(VERSION 3.25)\nproject(p CXX)\n' >"$work/find/CMakeLists.txt"
  for argument in "${@:3}"; do
    case $argument in
    -D*) options+=("$argument") ;;
    *) echo "find_package(PimVobjMgr $argument)" >>"$work/find/CMakeLists.txt" ;;
    esac
  done
  "$how" ${pattern:+"$pattern"} cmake -S "$work/find" -B "$work/find/build" "${package[@]}" \
    ${options[@]+"${options[@]}"}
}

if [ "$way" != subdirectory ]; then
  for component in Development Runtime; do
    step cmake --install "$build" --prefix "$work/first" --component $component
  done
  mv "$work/first" "$prefix"
  [ -z "$(find "$prefix" -xtype l)" ] || { echo "links to nowhere: $(find "$prefix" -xtype l)"; exit 1; }
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
    PKG_CONFIG_LIBDIR=/nowhere build_host core_static -DCMAKE_DISABLE_FIND_PACKAGE_SQLite3=ON \
      -DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON "$@"' host "${package[@]}"
  step "$work/core_static/host"
  try 'refused' "there is no component 'nonsense'" 'REQUIRED COMPONENTS nonsense'
  try 'refused' 'exclude each other' 'REQUIRED COMPONENTS static shared'
  try 'refused' 'exclude each other' 'REQUIRED COMPONENTS core static' 'REQUIRED COMPONENTS shared'
  try 'refused' "version: $version" '0.1 REQUIRED'
  try 'refused' "version: $version" '0.3 REQUIRED'
  # What isn't there is no reason to fail where it needn't be.
  try 'step' '' 'REQUIRED COMPONENTS core OPTIONAL_COMPONENTS nonsense'
  without=(-DCMAKE_DISABLE_FIND_PACKAGE_SQLite3=ON)
  try 'step' '' 'REQUIRED COMPONENTS core OPTIONAL_COMPONENTS store static' "${without[@]}"
  try 'refused' 'static store needs SQLite3' 'REQUIRED COMPONENTS store static' "${without[@]}"
  # A second call keeps to the kind of the first.
  try 'step' '' 'REQUIRED COMPONENTS core shared' 'REQUIRED COMPONENTS store' "${without[@]}"
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
  step cmake -G Ninja -S "$root/examples" -B "$work/examples" "${package[@]}"
  step cmake --build "$work/examples"
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
  export PKG_CONFIG_LIBDIR=/nowhere
  step pkg-config --cflags pimstore
  [ "$(flags --static pimstore | grep -c -- -lsqlite3)" = 1 ] || { flags --static pimstore; exit 1; }
  ;;
subdirectory)
  # Without what only the store and the program need.
  build_host subdirectory -DPIM_SOURCE="$root" -DPIMVOBJ_BUILD_STORE=OFF \
    -DCMAKE_DISABLE_FIND_PACKAGE_SQLite3=ON -DCMAKE_DISABLE_FIND_PACKAGE_RapidJSON=ON \
    -DCMAKE_DISABLE_FIND_PACKAGE_PkgConfig=ON
  step "$work/subdirectory/host"
  step cmake -S "$here/subdirectory" -B "$work/with_store" -DPIM_SOURCE="$root" -DBUILD_SHARED_LIBS=ON
  ;;
esac
