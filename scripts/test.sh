#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Builds with a preset (dev by default) and runs all tests; with clang all but the slow ones, to which
# a second compiler makes no difference.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
preset=${1:-dev}

"$root/scripts/setup.sh" all
cd "$root"
cmake --preset "$preset"
cmake --build --preset "$preset"
# Once is enough: headers are the same for all.
[ "$preset" != dev ] || cmake --build --preset dev --target all_verify_interface_header_sets
# Some wait for servers; others run beside them.
ctest --preset "$preset" -j "$(($(nproc) + 1))"
