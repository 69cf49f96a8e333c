#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Kills a primary server while several imports write to it, and makes its standby the primary: each
# import goes on there and ends well, and each file is there once, as a whole, and so in the history.
# In every other round cards may be stored twice, so that nothing but the program keeps a file that
# was stored, whose answer was lost, from coming once more.
# Usage: failover.sh PIMVOBJ [ROUNDS=20] [FILES=200] [IMPORTS=4]
set -euo pipefail
program=$(realpath "$1") rounds=${2:-20} files=${3:-200} imports=${4:-4}
here=$(realpath "$(dirname "$0")")
. "$here/server.sh"
. "$here/cards.sh"
servers_begin
cd "$work"
export HOME=$work/home TZ=UTC LC_ALL=C.UTF-8
unset XDG_DATA_HOME PIMVOBJ_STORE
mkdir home

processes=()

# Keeps what tells of a round that failed.
fail() {
  local kept
  kill "${processes[@]}" 2>/dev/null || true
  kept=$(mktemp -d "${TMPDIR:-/tmp}/pim-failover-XXXXXX")
  for server in primary standby; do [ ! -e "$server/log" ] || cp "$server/log" "$kept/$server.log"; done
  cp out.* ./*.json ./*.names all.vcf "$kept" 2>/dev/null || true
  echo "round $round: $*"
  echo "logs and what was found are in $kept"
  exit 1
}

for ((i = 0; i < imports; ++i)); do make_files "Import$i" "$files"; done
cat Import*/*.vcf | names_of_cards >wanted.names
wanted=$(wc -l <wanted.names)
pictures=$(cat Import*/*.vcf | grep -c '^PHOTO')

# What is amiss with the store on the new primary.
amiss() {
  local url
  url=$(server_url "$work/standby")
  "$program" --store "$url" contacts list --json >list.json 2>out.list || { echo "no list: $(cat out.list)"; return; }
  names_of_list <list.json >found.names
  names_differ wanted.names found.names && return
  [ "$(jq '[.contacts[] | select(.groups == ["Friends"])] | length' list.json)" -eq "$wanted" ] ||
    echo "contacts have lost their group"
  "$program" --store "$url" contacts export --force all.vcf >out.export 2>&1 || echo "no export: $(cat out.export)"
  names_of_cards <all.vcf | cmp -s - wanted.names || echo "an export has other contacts than the list"
  [ "$(grep -c '^PHOTO' all.vcf)" -eq "$pictures" ] || echo "pictures are missing from contacts"
  "$program" --store "$url" history --json >history.json 2>out.history ||
    { echo "no history: $(cat out.history)"; return; }
  jq -e --argjson imports "$imports" --argjson files "$files" --argjson cards $((wanted / imports)) '.imports |
    length == $imports and all(.[]; .state == "done" and (.totals | .files == $files and .new == $cards and
      .in_file == $cards and .already_there == 0) and (.files | map(.name) | unique | length == $files))' \
    history.json >/dev/null || echo "the history isn't that of $imports imports of $files files"
}

# stored SERVER: how many contacts it has; none while there are no tables.
stored() {
  local count
  count=$("$program" --store "$(server_url "$work/$1")" contacts count 2>/dev/null) || count=0
  echo "$count"
}

among=0
for ((round = 1; round <= rounds; ++round)); do
  rm -rf home/* out.* ./*.json all.vcf
  server_start "$work/primary" fsync=on full_page_writes=on max_connections=30
  server_standby "$work/standby" "$work/primary"
  url="postgresql://pim@/pim?host=$work/primary,$work/standby&port=$servers_port&target_session_attrs=read-write"
  options=()
  ((round % 2)) || options=(--keep-duplicates)
  processes=()
  for ((i = 0; i < imports; ++i)); do
    XDG_DATA_HOME=$work/home/$i timeout 300 "$program" --store "$url" contacts import "${options[@]}" "Import$i" \
      >"out.$i" 2>&1 &
    processes+=($!)
  done

  # Some are stored, more are to come: how many is another each time.
  moment=$((RANDOM % (wanted * 3 / 4)))
  while [ "$(stored primary)" -le $moment ] && kill -0 "${processes[@]}" 2>/dev/null; do :; done
  server_kill "$work/primary"
  before=$(stored standby)
  sleep "$((RANDOM % 3)).$((RANDOM % 8 + 2))"
  server_promote "$work/standby"

  for ((i = 0; i < imports; ++i)); do
    status=0
    wait "${processes[i]}" || status=$?
    [ $status -eq 0 ] || fail "import $i ends with $status: $(tail -n 5 "out.$i")"
    each=$((wanted / imports))
    grep -q "^$each contacts imported: .* in $files files, $each new, 0 already" "out.$i" ||
      fail "import $i tells something else: $(tail -n 1 "out.$i")"
  done
  problem=$(amiss)
  [ -z "$problem" ] || fail "$problem"
  if [ "$before" -gt 0 ] && [ "$before" -lt "$wanted" ]; then among=$((among + 1)); fi
  server_remove "$work/primary"
  server_remove "$work/standby"
done
[ $among -gt 0 ] || { echo "no server was killed amid the imports: more files are needed"; exit 1; }
echo "$rounds failovers, $among amid $imports imports: each of $((imports * files)) files is there once"
