#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Checks the formatting of all sources, their licenses, and runs clang-tidy over the product's, by the
# build in build/clang.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

echo "check: formatting"
mapfile -t sources < <(git ls-files '*.h' '*.cpp')
clang-format --dry-run --Werror "${sources[@]}"

echo "check: licenses"
reuse lint >/dev/null || reuse lint

echo "check: clang-tidy, without its analyser"
tidy=(clang-tidy --quiet)
without_count() { grep -v 'warnings generated' >&2; }
# The build compiles the sources of a folder as one, and so they are looked at.
jq -r '.[].file' build/clang/compile_commands.json |
  grep -E '/build/clang/(src|app|tools)/(.*/)?CMakeFiles/' |
  xargs -d '\n' -n 1 -P "$(nproc)" "${tidy[@]}" -p build/clang \
    --checks='-bugprone-suspicious-include,-clang-analyzer-*' 2> >(without_count)

echo "check: the analyser"
# It looks at this many states of a function, which is enough for nearly all of them; and at none in
# a file that is included, so that each source is looked at by itself.
analyser=(--extra-arg=-Xclang --extra-arg=-analyzer-config --extra-arg=-Xclang
  --extra-arg=max-nodes=30000)
git ls-files 'src/*.cpp' 'app/*.cpp' 'tools/*.cpp' |
  xargs -d '\n' -n 4 -P "$(nproc)" "${tidy[@]}" -p build/dev --checks='-*,clang-analyzer-*' \
    --extra-arg=-Wno-unknown-warning-option "${analyser[@]}" 2> >(without_count)
