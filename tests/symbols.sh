#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# The libraries print nothing, and end no program: none of their objects asks for what would.
# Usage: symbols.sh LIBRARY...
set -euo pipefail

forbidden='^(abort|exit|_exit|quick_exit|printf|vprintf|puts|putchar|fputs|perror|std::(cout|cerr|clog))$'
status=0
for library in "$@"; do
  names=$(nm --undefined-only --demangle --format=just-symbols "$library" | sed 's/@.*//; s/(.*//' | sort -u)
  [ -n "$names" ] || { echo "$library: no symbols are read"; exit 1; }
  if found=$(grep -E "$forbidden" <<<"$names"); then
    echo "$library asks for:" $found
    status=1
  fi
done
exit $status
