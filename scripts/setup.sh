#!/usr/bin/env bash
# Installs every Debian package that building, testing and checking needs. Does nothing where all are there.
set -euo pipefail

packages=(
  cmake ninja-build g++ clang clang-format clang-tidy libclang-rt-14-dev pkg-config
  libsqlite3-dev libcli11-dev rapidjson-dev libutf8proc-dev
  libgtest-dev libbenchmark-dev
  tzdata sqlite3 jq
)

missing=()
for package in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

sudo=()
[ "$(id -u)" -eq 0 ] || sudo=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${sudo[@]}" apt-get update -qq >&2
"${sudo[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2
