#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Installs the Debian packages that are missing, and says so: those that building the program needs,
# with "package" also those that making packages of it needs, or with "all" those that testing and
# checking need, too. Does nothing where all are there.
set -euo pipefail

packages=(cmake ninja-build g++ pkg-config libsqlite3-dev libpq-dev libzstd-dev nettle-dev rapidjson-dev
  libutf8proc-dev libical-dev)
case ${1:-} in package | all) packages+=(dpkg-dev) ;; esac
[ "${1:-}" = all ] && packages+=(
  clang clang-format clang-tidy libclang-rt-14-dev
  libgtest-dev libbenchmark-dev
  tzdata sqlite3 jq abigail-tools doxygen lintian mmdebstrap reuse
  mandoc bash-completion zsh fish
  postgresql-15 pgbouncer
  python3-vobject python3-icalendar libez-vcard-java libvinnie-java openjdk-17-jdk-headless
  chromium fonts-dejavu-core fonts-vlgothic poppler-utils
)
# Where Node.js comes from elsewhere, npm comes with it.
[ "${1:-}" != all ] || command -v npm >/dev/null || packages+=(nodejs npm)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0
misses() { [[ " ${missing[*]} " == *" $1 "* ]]; }

echo "Installing ${missing[*]}" >&2
sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)
export DEBIAN_FRONTEND=noninteractive
log=$(mktemp)
temporary=()
clean() {
  rm -f "$log"
  [ ${#temporary[@]} -eq 0 ] || "${sudo[@]}" rm -f "${temporary[@]}"
}
trap clean EXIT

# put FILE MODE: a file of what is read, until the end; one that is there stays as it is.
put() {
  [ ! -e "$1" ] || return 0
  temporary+=("$1")
  "${sudo[@]}" mkdir -p "$(dirname "$1")"
  "${sudo[@]}" tee "$1" >/dev/null
  "${sudo[@]}" chmod "$2" "$1"
}

# Tests start servers of their own; these packages would besides make a database, and services that
# run from now on.
if misses postgresql-15 || misses pgbouncer; then
  put /etc/postgresql-common/createcluster.d/no-main-cluster.conf 644 <<<'create_main_cluster = false'
  put /usr/sbin/policy-rc.d 755 <<<$'#!/bin/sh\nexit 101'
fi
{ "${sudo[@]}" apt-get update -qq &&
  "${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 </dev/null || {
  cat "$log" >&2
  exit 1
}
! misses pgbouncer || "${sudo[@]}" update-rc.d pgbouncer disable >/dev/null
