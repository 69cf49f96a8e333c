#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Builds the fuzz targets and gives each a number of inputs (10000 by default), made from its corpus.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
runs=${1:-10000}

"$root/scripts/setup.sh" all
cd "$root"
cmake --preset fuzz
cmake --build --preset fuzz --target fuzz_targets
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for corpus in fuzz/corpus/*; do
  target=$(basename "$corpus")
  mkdir "$work/$target"
  echo "$target: $runs inputs"
  if ! build/fuzz/fuzz/"$target" -seed=1 -runs="$runs" -max_len=4000 -artifact_prefix="$work/" \
      "$work/$target" "$corpus" >"$work/log" 2>&1; then
    tail -n 40 "$work/log"
    exit 1
  fi
done
