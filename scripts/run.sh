#!/usr/bin/env bash
# Builds what is needed and runs: pimvobj ARGS...
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

{
  "$root/scripts/setup.sh"
  cmake -S "$root" -B "$root/build/run" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=g++
  cmake --build "$root/build/run" --target pimvobj
} >"${TMPDIR:-/tmp}/pimvobj-build.$$" 2>&1 || {
  cat "${TMPDIR:-/tmp}/pimvobj-build.$$" >&2
  exit 1
}
rm -f "${TMPDIR:-/tmp}/pimvobj-build.$$"
exec "$root/build/run/app/pimvobj" "$@"
