#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Kills what changes a store beyond a single import, at moments spread over its whole run, and looks
# at what is left: a store that SQLite finds whole, each import wholly there or not, a history that
# tells what is there, and no picture without an owner behind the next command.
# Usage: steps.sh PIMVOBJ STEP [ROUNDS=200] [FILES=60]; STEP is files, undo, migrate or drop. Only an
# import of some thousand files commits several times.
set -u
program=$(realpath "$1") step=$2 rounds=${3:-200}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export HOME=$work/home TZ=UTC
unset XDG_DATA_HOME PIMVOBJ_STORE
files=${4:-60} cards=40 pictures=2  # of each file

fail() {
  echo "$step, round $round: $*"
  exit 1
}
pim() { "$program" --store pim.db "$@"; }
ask() { sqlite3 pim.db "$1"; }

mkdir -p home cards template
for ((file = 0; file < files; ++file)); do
  for ((i = 0; i < cards; ++i)); do
    printf 'BEGIN:VCARD\r\nN:Doe%d-%d;John\r\nTEL;CELL:%d\r\nX-GROUP:Friends\r\n' "$file" "$i" "$i"
    ((i < pictures)) && printf 'PHOTO;PNG;BASE64:%s\r\n' "$(printf 'picture %d %d' "$file" "$i" | base64)"
    printf 'END:VCARD\r\n'
  done >"cards/$file.vcf"
done
round=0
pim contacts import cards >/dev/null || fail "the import fails"
all=$((files * cards)) allPictures=$((files * pictures))

# What each step begins with, and the command that is killed.
case $step in
  files) rm -rf pim.db* home && mkdir home && command=(contacts import cards) ;;
  undo) command=(undo) ;;
  drop) command=(original drop) ;;
  migrate)
    tables='Imports ImportFiles Originals OriginalParts ContactOrigins CalendarOrigins ImportedGroups
      ImportedLinks Pictures PictureNames StoreSettings'
    for table in $tables; do ask "DROP TABLE $table"; done
    ask 'DROP INDEX Index_Contacts_photo; PRAGMA user_version = 1; VACUUM' && command=(original on)
    ask 'SELECT count(*) FROM sqlite_schema' >template/schema
    ;;
esac
cp -a pim.db* home template/ 2>/dev/null

restore() {
  rm -rf pim.db* home
  cp -a template/home .
  cp -a template/pim.db* . 2>/dev/null
}

# The rows of the store and the files beside it, by what each step may leave.
check() {
  local contacts state kept
  contacts=$(ask 'SELECT count(*) FROM Contacts')
  case $step in
    files)
      [ "$((contacts % cards))" -eq 0 ] || fail "a file is there in part"
      [ "$contacts" -eq "$(ask 'SELECT coalesce(sum(stored), 0) FROM ImportFiles')" ] || fail "the history lies"
      state=$(pim history --json | jq -r '.imports[0].state // "none"')
      case $status.$state.$contacts in
        0.done.$all | 137.done.$all | 137.interrupted.* | 137.none.0) ;;
        *) fail "$contacts contacts, exit status $status and the history says '$state'" ;;
      esac
      ;;
    undo)
      state=$(pim history --json | jq -r '.imports[0].state')
      case $state.$contacts in
        done.$all | undone.0) ;;
        *) fail "$contacts contacts and the history says '$state'" ;;
      esac
      [ "$contacts" -ne 0 ] || [ "$(ask 'SELECT count(*) FROM ContactGroups')" -eq 0 ] || fail "a group stays"
      ;;
    migrate)
      [ "$contacts" -eq "$all" ] || fail "$contacts contacts"
      state=$(ask 'PRAGMA user_version')
      [ "$state" -ne 1 ] || [ "$(ask 'SELECT count(*) FROM sqlite_schema')" -eq "$(cat template/schema)" ] ||
        fail "a store of version 1 has tables of version 2"
      pim original on >/dev/null || fail "the store doesn't open"
      [ "$(ask 'SELECT count(*) FROM Pictures')" -eq "$allPictures" ] || fail "pictures aren't taken over"
      ;;
    drop)
      [ "$contacts" -eq "$all" ] || fail "$contacts contacts"
      rm -rf out && mkdir out
      pim original export out >/dev/null 2>&1
      kept=$(find out -name '*.vcf' | wc -l)
      [ "$kept" -eq 0 ] || diff -r out cards >/dev/null || fail "$kept of $files originals are there"
      state=$kept
      ;;
  esac
  seen[$state]=$((${seen[$state]:-0} + 1))
}

check_pictures() {
  pim contacts list --json >list.json || fail "the store can't be listed"
  jq -r '.contacts[].photo | select(. != "")' list.json | sort >named
  find home -path '*CallerId/*' -type f -printf '%f\n' | sort >there
  cmp -s named there || fail "$(comm -3 named there | wc -l) pictures are missing or nobody's"
  [ -z "$(find home -path '*incoming/*')" ] || fail "the staging folder isn't cleared"
}

declare -A seen
for ((round = 1; round <= rounds; ++round)); do
  if ((round % 20 == 1)); then  # the machine may have other work by now
    restore
    start=$(date +%s%N)
    pim "${command[@]}" >/dev/null || fail "it fails unkilled"
    whole=$(($(date +%s%N) - start))
  fi
  restore
  "$program" --store pim.db "${command[@]}" >/dev/null 2>&1 &  # no function, whose shell would be killed
  killed=$!
  wait_ns=$((whole * 13 / 10 * (RANDOM % 1000) / 1000))
  sleep "$(printf '%d.%09d' $((wait_ns / 1000000000)) $((wait_ns % 1000000000)))"
  { kill -KILL "$killed"; wait "$killed"; } 2>/dev/null
  status=$?
  [ $status -eq 0 ] || [ $status -eq 137 ] || fail "exit status $status"
  if [ -s pim.db ] && [ -n "$(ask 'PRAGMA table_list(Contacts)')" ]; then
    [ "$(ask 'PRAGMA integrity_check')" = ok ] || fail "the store is damaged"
    [ -z "$(ask 'PRAGMA foreign_key_check')" ] || fail "a reference leads nowhere"
    check
    check_pictures
  fi
done
printf '%d kills of %s:' "$rounds" "$step"
for state in "${!seen[@]}"; do printf ' %s %d' "$state" "${seen[$state]}"; done
echo
