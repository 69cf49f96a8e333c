#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Runs a program in a folder of its own that has the samples and compares what it prints with a
# file. Usage: run.sh ROOT EXPECTED PROGRAM ARGS...; INPUT names a file for its standard input
set -euo pipefail
root=$1 expected=$2
shift 2
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -r "$root/samples" "$work"
cd "$work"
export XDG_DATA_HOME=$work/data TZ=UTC0
"$@" <"${INPUT:-/dev/null}" >"$work/printed"
diff -u "$expected" "$work/printed"
