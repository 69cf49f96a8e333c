#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# What a shared library has loaded with it: the language's own libraries, and those named. Usage:
# loads.sh LIBRARY NAME...
set -euo pipefail

loaded=$(objdump -p "$1" | sed -n 's/^ *NEEDED *\(.*\)\.so.*/\1/p' |
  grep -vE '^(libstdc\+\+|libgcc_s|libc|libm|ld-linux.*)$' | sort || true)
wanted=$(printf '%s\n' "${@:2}" | sort)
[ "$loaded" = "$wanted" ] || { echo "$(basename "$1") loads" $loaded", not" $wanted; exit 1; }
