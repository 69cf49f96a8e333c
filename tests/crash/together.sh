#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Runs several imports at once into one store, with an undo of an earlier one and a list beside them
# and an import into another store of the same user that is killed: nothing is lost, no group stands twice, each list shows the
# files as they were before an import or after it, and all pictures are where the contacts say.
# Usage: together.sh PIMVOBJ [ROUNDS=20] [IMPORTS=4]
set -u
program=$(realpath "$1") rounds=${2:-20} imports=${3:-4}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export HOME=$work/home TZ=UTC
unset XDG_DATA_HOME PIMVOBJ_STORE
cards=300 pictures=60
groups=(Friends FRIENDS friends Friends) umlauts=(Ärzte ÄRZTE ärzte Ärzte)

fail() {
  echo "round $round: $*"
  exit 1
}

# What is amiss with a store whose files were all imported, or nothing.
amiss() {
  local store=$1 expected=$2
  "$program" --store "$store" contacts list --json >list.json || { echo "$store can't be listed"; return; }
  [ "$(jq '.contacts | length' list.json)" -eq $((expected * cards)) ] || echo "$store lacks contacts"
  jq -r '.contacts[].photo | select(. != "")' list.json | sort >named
  [ "$(wc -l <named)" -eq $((expected * pictures)) ] || echo "contacts of $store lack pictures"
  find home -path '*CallerId/*' -not -path '*incoming*' -type f -printf '%f\n' | sort >there
  comm -23 named there | grep -q . && echo "contacts of $store name pictures that aren't there"
}

for ((file = 0; file <= imports; ++file)); do
  for ((i = 0; i < cards; ++i)); do
    printf 'BEGIN:VCARD\r\nN:Doe%d-%d;John\r\nX-GROUP:%s\r\nX-GROUP:%s\r\n' "$file" "$i" \
      "${groups[file % 4]}" "${umlauts[file % 4]}"
    ((i % (cards / pictures) == 0)) &&
      printf 'PHOTO;PNG;BASE64:%s\r\n' "$(printf 'picture %d %d' "$file" "$i" | base64)"
    printf 'END:VCARD\r\n'
  done >"$file.vcf"
done

for ((i = 0; i < cards; ++i)); do printf 'BEGIN:VCARD\r\nN:Undone%d;John\r\nEND:VCARD\r\n' "$i"; done >undone.vcf

for ((round = 1; round <= rounds; ++round)); do
  rm -rf home ./*.db*
  mkdir home
  "$program" --store one.db contacts import undone.vcf >/dev/null || fail "the first import fails"
  "$program" --store one.db undo 1 >out.undo 2>&1 &
  undo=$!
  pids=()
  for ((file = 0; file < imports; ++file)); do
    "$program" --store one.db contacts import "$file.vcf" >"out.$file" 2>&1 &
    pids+=($!)
  done
  "$program" --store other.db contacts import "$imports.vcf" >/dev/null 2>&1 &
  killed=$!
  disown "$killed"  # no word about its end
  (sleep "0.0$((RANDOM % 10))" && kill -KILL "$killed") 2>/dev/null &
  killer=$!
  while kill -0 "${pids[@]}" 2>/dev/null; do
    [ -s one.db ] || continue
    "$program" --store one.db contacts list --json >beside.json || fail "a list beside the imports fails"
    jq -e ".contacts | length % $cards == 0 and all(.[] | .groups | length; . == 0 or . == 2)" beside.json \
      >/dev/null || fail "a list shows part of an import"
  done
  for ((file = 0; file < imports; ++file)); do
    wait "${pids[file]}" || fail "an import fails: $(cat "out.$file")"
  done
  wait "$undo" || fail "an undo fails: $(cat out.undo)"
  wait "$killer"
  while kill -0 "$killed" 2>/dev/null; do sleep 0.01; done
  problem=$(amiss one.db "$imports")
  [ -z "$problem" ] || fail "$problem"
  [ "$(sqlite3 one.db 'SELECT count(*) FROM ContactGroups')" -eq 2 ] || fail "a group stands twice"
  [ "$(sqlite3 one.db 'PRAGMA integrity_check')" = ok ] || fail "the store is damaged"
  stored=0
  [ -s other.db ] && stored=$("$program" --store other.db contacts list --json | jq '.contacts | length')
  "$program" --store other.db contacts import --keep-duplicates "$imports.vcf" >/dev/null || fail "the next import fails"
  problem=$(amiss one.db "$imports"; amiss other.db $((stored / cards + 1)))
  [ -z "$problem" ] || fail "$problem"
  for store in one.db other.db; do
    "$program" --store "$store" contacts list --json | jq -r '.contacts[].photo | select(. != "")'
  done | sort >named
  comm -13 named there | grep -q . && fail "pictures that no contact names stay behind"
done
echo "$rounds rounds of $imports imports: nothing lost"
