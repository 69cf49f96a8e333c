#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Builds what is needed and runs: pimvobj ARGS...
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build/run

# Runs one step of the build, of which only a failure is shown.
step() {
  local log
  log=$(mktemp)
  if ! "$@" >"$log" 2>&1; then
    cat "$log" >&2
    rm -f "$log"
    exit 1
  fi
  rm -f "$log"
}

"$root/scripts/setup.sh"
[ -x "$build/app/pimvobj" ] || echo "Building pimvobj, which takes about two minutes" >&2
[ -e "$build/build.ninja" ] ||
  step cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=g++
step cmake --build "$build" --target pimvobj
exec "$build/app/pimvobj" "$@"
