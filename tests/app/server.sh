#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Works on a store in the server that PIM_TEST_POSTGRES names as on a file, and loses the connection.
# Usage: server.sh PIMVOBJ ROOT
set -u
program=$(realpath "$1") root=$(realpath "$2")
work=$(mktemp -d)
cd "$work" || exit 1
export HOME=$work/home TZ=UTC LC_ALL=C.UTF-8
unset XDG_DATA_HOME PIMVOBJ_STORE
schema=program_$$
failures=0
. "$root/tests/app/checks.sh"

sql() { psql -X -q -A -t -v ON_ERROR_STOP=1 "$PIM_TEST_POSTGRES" -c "$1"; }
trap 'sql "DROP SCHEMA $schema, ${schema}_copy CASCADE" 2>/dev/null; rm -rf "$work"' EXIT
sql "CREATE SCHEMA $schema" && sql "CREATE SCHEMA ${schema}_copy" || exit 1
# The server asks for no password; one that is given must show up nowhere all the same.
url="$PIM_TEST_POSTGRES&application_name=$schema&password=s3cret&options=-csearch_path%3D$schema"

cp "$root"/samples/*.vc[fs] .
printf 'BEGIN:VCARD\nN:Good\nEND:VCARD\nBEGIN:VCARD\nN:Bad\nTEL;:1\nEND:VCARD\n' >bad.vcf

# Each command does and says the same, but for the store's name and when something was done.
told() {
  local now='20[0-9]{2}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2} .00:00' stamp='[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]+Z?'
  HOME=$work/$2 "$program" --store "$1" "${@:3}" 2>&1 </dev/null |
    sed -E "s/(store is|^pimvobj:) [^ ;]*(pim.db|search_path=$schema)/\1 STORE/; s/\"number\":[0-9]*//g
      s/$now//; s/$stamp//g; s/zevo[-0-9A-F]*//g"
}
while read -r command; do
  same "$command" "$(told pim.db file $command)" "$(told "$url" server $command)"
done <<'COMMANDS'
contacts list
history
contacts import friends.vcf bad.vcf --dry-run
contacts import friends.vcf bad.vcf phone-japan.vcf --group Phone
contacts import friends.vcf bad.vcf --rejects aside.vcf --report report.jsonl --force
calendar import calendar.vcs
contacts list --jsonl
contacts list muller --group phone --sort name
calendar list --json
contacts count
contacts show 1
contacts export - Alice
calendar export - --all
history --json
original list --json
original show contact 1
contacts delete 1 2 999
undo 3 --dry-run
undo
original off
original drop
store tidy
history
contacts list --json
COMMANDS
same history-without-password 0 "$("$program" --store "$url" history --json | grep -c s3cret)"

# there and back
copied() { "$program" --store "$1" contacts list --jsonl; "$program" --store "$1" history --json; }
check copy-to 1 '^pimvobj: postgresql://.*: holds something already' store copy --from pim.db --to "$url"
check copy-to 0 '^[0-9]+ rows copied from pim.db to postgresql://' store copy --from pim.db --to "${url}_copy"
check copy-back 0 '^[0-9]+ rows copied from postgresql://.* to back.db$' store copy --from "${url}_copy" --to back.db
same copy-both "$(copied pim.db)" "$(copied back.db)"

# imported NAMES GROUP COUNT: what an import of so many cards, each in a file, says and leaves.
card() { printf 'BEGIN:VCARD\nN:%s\nX-GROUP:%s\nEND:VCARD\n' "$1" "$2" >"$1.vcf"; }
imported() {
  local wanted=$1 group=$2 count=$3
  same "$group" "$count contacts imported: $count in $count files, $count new, 0 already there, 0 refused; 1 group made" \
    "$(cat out)"
  same "$group stored" "$wanted" "$("$program" --store "$url" contacts list --group "$group" --json |
    jq -r '[.contacts[].name.family_name] | sort | join(" ")')"
  same "$group in the history" "done $count $count" "$("$program" --store "$url" history --json |
    jq -r '.imports[-1] | "\(.state) \(.totals.files) \(.totals.new)"')"
}

# The connection goes while an import waits for its input, and while another program holds it up in
# the midst of a transaction.
sql "CREATE FUNCTION $schema.hold() RETURNS trigger LANGUAGE plpgsql AS
  'BEGIN PERFORM pg_advisory_xact_lock_shared(4711); RETURN NULL; END';
  CREATE TRIGGER hold AFTER INSERT ON $schema.contacts FOR EACH STATEMENT EXECUTE FUNCTION $schema.hold()" || exit 1
end_connection() {
  local ended="SELECT count(pg_terminate_backend(pid)) FROM pg_stat_activity WHERE application_name = '$schema' AND $1"
  for ((i = 0; i < 100; ++i)); do
    [ "$(sql "$ended")" = 1 ] && return
    sleep 0.05
  done
  echo "no connection was lost: $1"
  failures=$((failures + 1))
}
mkfifo input
for name in First Input Last; do card $name Lost; done
stored=$(sql "SELECT count(*) FROM $schema.contacts")
"$program" --store "$url" contacts import First.vcf - Last.vcf <input >out 2>&1 &
import=$!
exec 3>input
end_connection "state = 'idle' AND (SELECT count(*) FROM $schema.contacts) > $stored"
coproc psql -X -q -A -t "$PIM_TEST_POSTGRES" 3>&-
echo "SELECT pg_advisory_lock(4711), 'held';" >&"${COPROC[1]}" && read -r _ <&"${COPROC[0]}"
cat Input.vcf >&3
exec 3>&-
end_connection "wait_event = 'advisory'"
echo 'SELECT pg_advisory_unlock(4711);' >&"${COPROC[1]}"
wait $import
imported 'First Input Last' Lost 3

# Other programs are in the way: of two tries out of three where contacts are stored, and of every
# other commit.
sql "CREATE SEQUENCE $schema.stored; CREATE SEQUENCE $schema.committed;
  CREATE FUNCTION $schema.fail() RETURNS trigger LANGUAGE plpgsql AS 'BEGIN
    IF nextval(TG_ARGV[0]) % TG_ARGV[1]::int <> 0 THEN RAISE SQLSTATE ''40001''; END IF; RETURN NULL; END';
  CREATE TRIGGER fail AFTER INSERT ON $schema.contacts FOR EACH STATEMENT
    EXECUTE FUNCTION $schema.fail('$schema.stored', 3);
  CREATE CONSTRAINT TRIGGER fail_late AFTER INSERT ON $schema.contacts DEFERRABLE INITIALLY DEFERRED
    FOR EACH ROW EXECUTE FUNCTION $schema.fail('$schema.committed', 2)" || exit 1
for name in Ann Bo Cy; do card $name Conflicts; done
"$program" --store "$url" contacts import Ann.vcf Bo.vcf Cy.vcf >out 2>&1
imported 'Ann Bo Cy' Conflicts 3

"$program" --store "$url" contacts import - <input >/dev/null 2>&1 &
exec 3>input
for ((i = 0; i < 50; ++i)); do
  limit=$(grep '^Max core file size' "/proc/$!/limits")
  [[ $limit != *size\ *\ 0\ * ]] || break
  sleep 0.02
done
exec 3>&-
same no-core-files 0 "$(awk '{ print $5 }' <<<"$limit")"
wait $!

[ "$failures" -eq 0 ] && echo "all is as it should be"
exit "$((failures > 0))"
