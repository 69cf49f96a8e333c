#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Installs a build into a folder, moves that elsewhere, and builds and runs a small host against it
# in one of the ways that hosts have. Usage: install.sh BUILD ROOT
# core|store|postgres|pkg-config|subdirectory; postgres wants a server in PIM_TEST_POSTGRES.
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
# build_host NAME FOLDER HOST OPTIONS...: the host by that folder's project, as $work/NAME/host.
build_host() {
  step cmake -G Ninja -S "$here/$2" -B "$work/$1" -DHOST="$3" "${@:4}"
  step cmake --build "$work/$1"
}
# without HEADERS COMMAND...: the command where these are hidden.
without() {
  export -f step build_host
  export work here
  headers=$1 unshare --mount --map-root-user bash -c 'set -euo pipefail
    for header in $headers; do [ ! -e "$header" ] || mount --bind /dev/null "$header"; done
    "$@"' host "${@:2}"
}
# loads PROGRAM LIBRARY...: whether it does so, and no other library of the project.
loads() {
  local loaded
  loaded=$(ldd "$1" | sed -n 's/^\s*lib\(pim[a-z]*\)\.so.*/\1/p' | sort | tr '\n' ' ')
  [ "$loaded" = "${*:2}${2:+ }" ] || { echo "$1 loads $loaded, not ${*:2}"; exit 1; }
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
  for component in Development Runtime PostgresRuntime; do
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

# What CMake isn't to find, and the headers of it.
none=(-DCMAKE_DISABLE_FIND_PACKAGE_{SQLite3,PostgreSQL,PkgConfig}=ON)
no_postgres=(-DCMAKE_DISABLE_FIND_PACKAGE_PostgreSQL=ON)
no_sqlite=(-DCMAKE_DISABLE_FIND_PACKAGE_SQLite3=ON)
libpq='/usr/include/postgresql/libpq-fe.h /usr/include/libpq-fe.h'
headers="$libpq /usr/include/sqlite3.h /usr/include/zstd.h /usr/include/nettle/sha2.h"
friends=$root/samples/friends.vcf

case $way in
core)
  without "$headers" build_host core installed CoreHost -DCOMPONENTS='core;static' "${package[@]}" "${none[@]}"
  loads "$work/core/host"
  step "$work/core/host"
  try 'refused' "there is no component 'nonsense'" 'REQUIRED COMPONENTS nonsense'
  try 'refused' 'exclude each other' 'REQUIRED COMPONENTS static shared'
  try 'refused' 'exclude each other' 'REQUIRED COMPONENTS core static' 'REQUIRED COMPONENTS shared'
  IFS=. read -r major minor _ <<<"$version"
  try 'refused' "version: $version" "$major.$((minor - 1)) REQUIRED"
  try 'refused' "version: $version" "$major.$((minor + 1)) REQUIRED"
  # What isn't there is no reason to fail where it needn't be.
  try 'step' '' 'REQUIRED COMPONENTS core OPTIONAL_COMPONENTS nonsense'
  try 'step' '' 'REQUIRED COMPONENTS core OPTIONAL_COMPONENTS store postgres static' "${none[@]}"
  try 'refused' 'static pimstore needs SQLite3' 'REQUIRED COMPONENTS store static' "${no_sqlite[@]}"
  try 'refused' 'static pimpgstore needs PostgreSQL' 'REQUIRED COMPONENTS postgres static' "${no_postgres[@]}"
  # A second call keeps to the kind of the first.
  try 'step' '' 'REQUIRED COMPONENTS core shared' 'REQUIRED COMPONENTS store postgres' "${none[@]}"
  # Without names, what can be had.
  try 'step' '' REQUIRED "${none[@]}"
  grep -q 'without postgres: the static pimpgstore needs' "$work/log" || { cat "$work/log"; exit 1; }
  ;;
store)
  build_host shared installed StoreHost -DCOMPONENTS='store;shared' "${package[@]}" "${none[@]}"
  loads "$work/shared/host" pimstore pimvobjmgr
  step "$work/shared/host" "$work/a.db" "$friends"
  # The static one, by BUILD_SHARED_LIBS and without a name.
  without "$libpq" build_host static installed StoreHost -DBUILD_SHARED_LIBS=OFF "${package[@]}" "${no_postgres[@]}"
  loads "$work/static/host"
  step "$work/static/host" "$work/b.db" "$friends"
  step cmake -G Ninja -S "$root/examples" -B "$work/examples" "${package[@]}"
  step cmake --build "$work/examples"
  ;;
postgres)
  build_host shared installed PostgresHost -DCOMPONENTS='postgres;shared' "${package[@]}" "${none[@]}"
  loads "$work/shared/host" pimpgstore pimvobjmgr
  step "$work/shared/host"
  build_host static installed PostgresHost -DCOMPONENTS='postgres;static' "${package[@]}" "${no_sqlite[@]}"
  loads "$work/static/host"
  step "$work/static/host"
  build_host both_shared installed BothHost -DCOMPONENTS='store;postgres;shared' "${package[@]}" "${none[@]}"
  build_host both_static installed BothHost -DCOMPONENTS='store;postgres;static' "${package[@]}"
  loads "$work/both_shared/host" pimpgstore pimstore pimvobjmgr
  loads "$work/both_static/host"
  for host in both_shared both_static; do
    schema=${host}_$$
    step psql -qc "CREATE SCHEMA $schema" "$PIM_TEST_POSTGRES"
    step "$work/$host/host" "$work/$host.db" "$friends" "$PIM_TEST_POSTGRES&options=-csearch_path%3D$schema"
    step psql -qc "DROP SCHEMA $schema CASCADE" "$PIM_TEST_POSTGRES"
  done
  ;;
pkg-config)
  export PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name pimstore.pc)")
  export LD_LIBRARY_PATH=$(pkg-config --variable=libdir pimstore)
  # compile HOST MODULE...
  compile() {
    # shellcheck disable=SC2046
    step g++ -std=c++20 "$here/$1.cpp" -o "$work/$1" $(pkg-config --cflags --libs "${@:2}")
  }
  compile CoreHost pimvobjmgr
  step "$work/CoreHost"
  compile StoreHost pimstore
  step "$work/StoreHost" "$work/a.db" "$friends"
  compile PostgresHost pimpgstore
  step "$work/PostgresHost"
  compile BothHost pimstore pimpgstore
  export PKG_CONFIG_LIBDIR=/nowhere
  for module in 'pimstore -lsqlite3' 'pimpgstore -lpq'; do
    step pkg-config --cflags "${module% *}"
    all=$(pkg-config --static --libs "${module% *}")
    [[ $all == *${module#* }*-lnettle* ]] || { echo "$module: $all"; exit 1; }
  done
  ;;
subdirectory)
  pim=$work/host/pim
  options=(-DPIM_SOURCE="$root" -DCMAKE_UNITY_BUILD=ON -DCMAKE_BUILD_TYPE=Release)
  # Without what only the stores and the program need.
  without "$headers" build_host host subdirectory CoreHost -DLIBRARY=pimvobjmgr "${options[@]}" \
    -DPIMVOBJ_BUILD_STORE=OFF "${none[@]}" -DCMAKE_DISABLE_FIND_PACKAGE_RapidJSON=ON
  step "$work/host/host"
  build_host host subdirectory PostgresHost -DLIBRARY=pimpgstore "${none[@]/=ON/=OFF}" "${no_sqlite[@]}" \
    -DPIMVOBJ_BUILD_POSTGRES=ON -DPIMVOBJ_INSTALL=ON
  step "$work/host/host"
  # What is installed of these, static libraries alone.
  step cmake --install "$pim" --prefix "$prefix" --component Development
  [ -z "$(find "$prefix" -name '*[sS]qlite*' -o -name '*pimstore*')" ] || { find "$prefix"; exit 1; }
  build_host found installed PostgresHost "${package[@]}" "${no_sqlite[@]}"
  step "$work/found/host"
  export PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name pimpgstore.pc)")
  # shellcheck disable=SC2046
  step g++ -std=c++20 "$here/PostgresHost.cpp" -o "$work/named" $(pkg-config --cflags --libs pimpgstore)
  step "$work/named"

  step cmake -S "$here/subdirectory" -B "$work/sqlite" -DHOST=StoreHost -DLIBRARY=pimstore \
    "${options[@]}" -DBUILD_SHARED_LIBS=ON -DPIMVOBJ_BUILD_POSTGRES=OFF -DPIMVOBJ_INSTALL=ON
  if grep -Erl 'pimpgstore|PostgresStore' "$work/sqlite" --include=cmake_install.cmake; then
    echo "these install what isn't built"
    exit 1
  fi
  ;;
esac
