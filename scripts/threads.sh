#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Builds the library and the test of threads under ThreadSanitizer, and runs that test.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

"$root/scripts/setup.sh" all
cd "$root"
cmake --preset tsan
cmake --build --preset tsan
build/tsan/tests/threads/threads_test
