#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Has libical and python3-icalendar read items that go out as iCalendar 2.0, and compares each field
# with the record. Usage: calendars.sh PIMVOBJ ITEM_PEER ODD_ITEMS ROOT [FILE...]
set -u
program=$1 peer=$2 odd=$3 root=$4
shift 4
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export HOME=$work TMPDIR=$work TZ=UTC LC_ALL=C.UTF-8
unset XDG_DATA_HOME PIMVOBJ_STORE
failures=0

for seed in 1 2 3 4; do "$odd" "$seed" 500 >"$work/odd-$seed.vcs"; done
for file in "$root"/samples/*.vcs "$root"/tests/data/*.vcs "$work"/odd-*.vcs "$@"; do
  "$program" --quiet inspect --json "$file" >"$work/records" 2>/dev/null
  if ! "$program" --quiet convert "$file" --to icalendar -f -o "$work/text" --report "$work/report" \
    >"$work/messages" 2>&1 || ! "$peer" "$work/text" >"$work/libical"; then
    echo "$file: $(cat "$work/messages")"
    failures=$((failures + 1))
    continue
  fi
  # Debian's own: the module is of no other Python.
  if ! /usr/bin/python3 -W error::UserWarning "$(dirname "$0")/item_peer.py" "$work/records" \
    "$work/text" "$work/report" "$work/libical" >"$work/faults" 2>&1; then
    echo "$file:"
    head -n 20 "$work/faults"
    failures=$((failures + 1))
  fi
done
exit $((failures != 0))
