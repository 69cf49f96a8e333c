#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Checks the formatting of all sources and runs clang-tidy over the product's, by the build in
# build/clang.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

mapfile -t sources < <(git ls-files '*.h' '*.cpp')
clang-format --dry-run --Werror "${sources[@]}"
# The analyser looks at this many states of a function, which is enough for nearly all of them.
analyser=(--extra-arg=-Xclang --extra-arg=-analyzer-config --extra-arg=-Xclang
  --extra-arg=max-nodes=30000)
mapfile -t units < <(git ls-files 'src/*.cpp' 'app/*.cpp' 'tools/*.cpp')
printf '%s\0' "${units[@]}" |
  xargs -0 -n 4 -P "$(nproc)" clang-tidy -p build/clang --quiet "${analyser[@]}" 2> >(grep -v 'warnings generated' >&2)
