#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Kills imports at moments spread over their whole run and looks at what is left: a store that
# SQLite finds whole, with the import wholly in it or not at all, links and pictures included.
# Usage: kill.sh PIMVOBJ [ROUNDS=200] [SIGNAL=KILL]
set -u
program=$(realpath "$1") rounds=${2:-200} signal=${3:-KILL}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export HOME=$work/home TZ=UTC
unset XDG_DATA_HOME PIMVOBJ_STORE
mkdir home
cards=4000 pictures=200

for ((i = 0; i < cards; ++i)); do
  printf 'BEGIN:VCARD\r\nN:Doe%d;John\r\nTEL;CELL:%d\r\nX-GROUP:Friends\r\nX-GROUP:Work\r\n' "$i" "$i"
  ((i % (cards / pictures) == 0)) && printf 'PHOTO;PNG;BASE64:%s\r\n' "$(printf 'picture %d' "$i" | base64)"
  printf 'END:VCARD\r\n'
done >cards.vcf

# Imports once more, unkilled, and looks whether the pictures of killed imports are gone.
check_leftovers() {
  "$program" --store pim.db contacts import --keep-duplicates cards.vcf >/dev/null || fail "the next import fails"
  "$program" --store pim.db contacts list --json | jq -r '.contacts[].photo | select(. != "")' | sort >named
  find home -path '*CallerId/*' -not -path '*incoming*' -type f -printf '%f\n' | sort >there
  cmp -s named there || fail "$(comm -13 named there | wc -l) pictures of killed imports stay behind"
  [ -z "$(find home -path '*incoming/*')" ] || fail "the staging folder isn't cleared"
}

fail() {
  echo "round $round: $*"
  exit 1
}

# Sets `whole` to how long an import takes that nobody kills, in nanoseconds.
measure() {
  mkdir timed
  local start
  start=$(date +%s%N)
  HOME=$work/timed "$program" --store timed/pim.db contacts import --keep-duplicates cards.vcf >/dev/null || exit 1
  whole=$(($(date +%s%N) - start))
  rm -rf timed
}

none=0 all=0 stored=0
for ((round = 1; round <= rounds; ++round)); do
  ((round % 20 == 1)) && measure  # the machine may have other work by now
  "$program" --store pim.db contacts import --keep-duplicates cards.vcf >/dev/null 2>&1 &
  import=$!
  wait_ns=$((whole * 16 / 10 * round / rounds))
  sleep "$(printf '%d.%09d' $((wait_ns / 1000000000)) $((wait_ns % 1000000000)))"
  { kill -"$signal" "$import"; wait "$import"; } 2>/dev/null
  status=$?
  [ $status -eq 0 ] || [ $status -eq $((128 + $(kill -l "$signal"))) ] || fail "exit status $status"
  [ -s pim.db ] || { none=$((none + 1)); continue; }
  [ "$(sqlite3 pim.db 'PRAGMA integrity_check')" = ok ] || fail "the store is damaged"
  [ -z "$(sqlite3 pim.db 'PRAGMA foreign_key_check')" ] || fail "a reference leads nowhere"
  [ -s pim.db ] || { none=$((none + 1)); continue; }  # sqlite3 has taken back the first transaction
  "$program" --store pim.db contacts list --json >list.json || fail "the store can't be listed"
  count=$(jq '.contacts | length' list.json)
  before=$stored
  [ "$count" -eq "$stored" ] || [ "$count" -eq $((stored + cards)) ] || fail "$((count - stored)) of $cards stored"
  [ "$count" -eq "$stored" ] && none=$((none + 1)) || all=$((all + 1))
  stored=$count
  jq -e 'all(.contacts[]; .groups == ["Friends", "Work"])' list.json >/dev/null || fail "links are missing"
  jq -r '.contacts[].photo | select(. != "")' list.json | sort >named
  [ "$(wc -l <named)" -eq $((stored / cards * pictures)) ] || fail "pictures are missing from contacts"
  # the list is the next command: it makes what is missing and clears what was left
  find home -path '*CallerId/*' -type f -printf '%f\n' | sort >there
  cmp -s named there || fail "pictures are missing or nobody's"
  [ $status -eq 0 ] && [ "$count" -eq "$before" ] && fail "an import that ended well isn't there"
  ((stored > cards * 4)) && check_leftovers && rm -rf pim.db* home && mkdir home && stored=0
done

check_leftovers
echo "$rounds kills: $none imports left out, $all wholly in"
