#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# The libraries print nothing, and end no program: none of their objects asks for what would. Each
# asks for the client of its own database alone.
# Usage: symbols.sh LIBRARY...
set -euo pipefail

forbidden='^(abort|_?_?exit|_Exit|quick_exit|raise|kill|__assert_fail|stdout|stderr|v?f?printf|__v?f?printf_chk|puts|putchar|fputs|fwrite|perror|std::(cout|cerr|clog))$'
clients='^(sqlite3_|PQ|pg_|ZSTD_|nettle_)'
declare -A own=(
  [libpimvobjmgr.a]='^$'
  [libpimstore.a]='^(sqlite3_|ZSTD_|nettle_)'
  [libpimpgstore.a]='^(PQ|ZSTD_|nettle_)'
)
status=0
for library in "$@"; do
  names=$(nm --undefined-only --demangle --format=just-symbols "$library" | sed 's/@.*//; s/(.*//' | sort -u)
  [ -n "$names" ] || { echo "$library: no symbols are read"; exit 1; }
  if found=$(grep -E "$forbidden" <<<"$names"); then
    echo "$library asks for:" $found
    status=1
  fi
  if found=$(grep -E "$clients" <<<"$names" | grep -vE "${own[$(basename "$library")]}"); then
    echo "$library asks for what isn't its own:" $found
    status=1
  fi
done
exit $status
