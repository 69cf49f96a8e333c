# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# What tests of the program by command share. Sourced with $program and $failures set.

# check NAME STATUS PATTERN ARGS...: the exit status, and a pattern that all output together matches.
check() {
  local name=$1 status=$2 pattern=$3 output actual
  shift 3
  output=$("$program" "$@" 2>&1 </dev/null)
  actual=$?
  if [ "$actual" -ne "$status" ] || ! grep -Eq -- "$pattern" <<<"$output"; then
    printf '%s: exit %s (wanted %s), output without /%s/:\n%s\n' "$name" "$actual" "$status" "$pattern" "$output"
    failures=$((failures + 1))
  fi
}

# same NAME WANTED GOT
same() {
  [ "$2" = "$3" ] && return
  printf '%s: wanted\n%s\ngot\n%s\n' "$1" "$2" "$3"
  failures=$((failures + 1))
}
