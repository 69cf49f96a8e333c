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
# The build compiles the sources of a folder as one, and so they are looked at.
mapfile -t units < <(jq -r '.[].file' build/clang/compile_commands.json |
  grep -E '/build/clang/(src|app|tools)/(.*/)?CMakeFiles/')
printf '%s\0' "${units[@]}" |
  xargs -0 -n 1 -P "$(nproc)" clang-tidy -p build/clang --quiet --checks=-bugprone-suspicious-include \
    "${analyser[@]}" 2> >(grep -v 'warnings generated' >&2)
