#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# The same texts through a file and through a server: what is listed, exported and remembered is the
# same to the byte, and so it is in a server that another store was copied into, and in one that was
# restored from a dump. PIM_TEST_POSTGRES names the server. Usage: same.sh PIMVOBJ TEXTS...
# Texts that end in .vcf hold contacts, the others calendars.
set -euo pipefail
program=$(realpath "$1")
cards=() items=()
for text in "${@:2}"; do
  case ${text,,} in *.vcf) cards+=("$(realpath "$text")") ;; *) items+=("$(realpath "$text")") ;; esac
done
work=$(mktemp -d)
schema=same_$$
admin=$PIM_TEST_POSTGRES
url() { echo "$admin&options=-csearch_path%3D$1"; }
sql() { psql -qAtX -v ON_ERROR_STOP=1 "$admin" -c "SET client_min_messages = warning" -c "$1"; }
finish() {
  sql "DROP SCHEMA IF EXISTS ${schema}_a, ${schema}_b CASCADE" || true
  rm -rf "$work"
}
trap finish EXIT
cd "$work"
export HOME=$work TZ=UTC LC_ALL=C.UTF-8
unset XDG_DATA_HOME PIMVOBJ_STORE
sql "CREATE SCHEMA ${schema}_a; CREATE SCHEMA ${schema}_b"

fail() {
  echo "same.sh: $*" >&2
  exit 1
}

# run NAME STORE ARGS...: in an application-data folder of that name. Texts may be refused.
run() {
  local status=0
  mkdir -p "$1/data"
  XDG_DATA_HOME=$work/$1/data "$program" --store "$2" "${@:3}" 2>>"$1/messages" || status=$?
  case $status in 0 | 3) ;; *) fail "$* ends with $status: $(tail -n 3 "$1/messages")" ;; esac
}

# import NAME STORE KIND TEXTS...
import() {
  [ $# -gt 3 ] || return 0
  run "$1" "$2" "$3" import --keep-duplicates "${@:4}" >>"$1/told"
  run "$1" "$2" "$3" import "${@:4}" >>"$1/told"
}
import_all() {
  mkdir -p "$1"
  import "$1" "$2" contacts "${cards[@]}"
  import "$1" "$2" calendar "${items[@]}"
  import "$1" "$2" memo "${items[@]}"
}

# Pictures have names of their own in each store, and the history has the time.
without_own() {
  sed -E 's/zevo[0-9A-F-]{36}/PICTURE/g; s/"(began|undone)":"[^"]*"/"\1":TIME/g; s/"--store","[^"]*"/STORE/'
}
show() {
  local kind
  mkdir -p "$1/shown"
  for kind in contacts calendar todo memo; do
    run "$1" "$2" "$kind" list --json | without_own >"$1/shown/$kind.json"
  done
  run "$1" "$2" history --json | without_own >"$1/shown/history.json"
  run "$1" "$2" contacts export "$1/shown/cards" >/dev/null
  for kind in calendar todo memo; do run "$1" "$2" "$kind" export "$1/shown/$kind.vcs" >/dev/null; done
}
same() {
  diff -r "$1/shown" "$2/shown" >difference || fail "$2 differs from $1: $(head -n 5 difference)"
}

server=$(url "${schema}_a")
import_all file file.db
import_all server "$server"
show file file.db
show server "$server"
diff <(sed 's/; the store is .*//' file/told) <(sed 's/; the store is .*//' server/told) ||
  fail "the imports tell other things"
same file server

"$program" store copy --from file.db --to "$(url "${schema}_b")" >/dev/null
show copied "$(url "${schema}_b")"
same file copied
"$program" store copy --from "$server" --to back.db >/dev/null
show back back.db
same server back

pg_dump -n "${schema}_a" "$admin" >dump.sql
sql "DROP SCHEMA ${schema}_a CASCADE"
psql -qX -v ON_ERROR_STOP=1 "$admin" -f dump.sql >/dev/null
show restored "$server"
same server restored
echo "the same for $(jq '.contacts | length' file/shown/contacts.json) contacts and $(jq '.[] | arrays | length' file/shown/calendar.json) events"
