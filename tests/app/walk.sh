#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# An hour with a phone's backup, from beginning to end: what a person types, and what must come of
# it. Usage: walk.sh PIMVOBJ
set -u
program=$(realpath "$1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export HOME=$work/home TZ=Europe/Berlin LC_ALL=C.UTF-8
unset XDG_DATA_HOME PIMVOBJ_STORE
failures=0

# step STATUS WANTED ARGS...: the exit status, and the whole output, where a * stands for anything.
step() {
  local status=$1 wanted=$2 output actual
  shift 2
  output=$("$program" "$@" 2>&1 </dev/null)
  actual=$?
  # shellcheck disable=SC2053
  if [ "$actual" -ne "$status" ] || [[ $output != $wanted ]]; then
    printf 'pimvobj %s: exit %s (wanted %s)\nwanted:\n%s\ngot:\n%s\n' "$*" "$actual" "$status" "$wanted" "$output"
    failures=$((failures + 1))
  fi
}

# The phone's folder: 300 cards with 30 pictures, a card with a byte that belongs to no base64, a
# file that was cut, two texts joined without a line end, three calendars.
mkdir phone
for ((i = 1; i <= 300; ++i)); do
  printf 'BEGIN:VCARD\r\nVERSION:2.1\r\nN:Müller%d;Käthe\r\nTEL;CELL:+49 30 %d\r\nX-GROUP:Phone\r\n' "$i" "$i"
  ((i % 10 == 0)) && printf 'PHOTO;PNG;BASE64:%s\r\n\r\n' "$(printf 'picture %d' "$i" | base64)"
  printf 'END:VCARD\r\n'
done >phone/cards.vcf
printf 'BEGIN:VCARD\r\nN:Bad;Card\r\nPHOTO;PNG;BASE64:QU?D\r\n\r\nEND:VCARD\r\n' >phone/bad.vcf
printf 'BEGIN:VCARD\r\nN:Whole;One\r\nEND:VCARD\r\nBEGIN:VCARD\r\nN:Cut;Off\r\nTEL:1' >phone/cut.vcf
printf 'BEGIN:VCARD\r\nN:First\r\nEND:VCARDBEGIN:VCARD\r\nN:Second\r\nEND:VCARD\r\n' >phone/joined.vcf
event() { printf 'BEGIN:VCALENDAR\r\nVERSION:%s\r\nBEGIN:%s\r\n%s\r\nEND:%s\r\nEND:VCALENDAR\r\n' "$1" "$2" "$3" "$2"; }
event 1.0 VEVENT $'SUMMARY:Lunch\r\nDTSTART:20260305T073000Z\r\nDTEND:20260305T080000Z\r\nRRULE:EVERY DAY' >phone/a.vcs
event 1.0 VTODO $'SUMMARY:Milk\r\nDUE:tomorrow' >phone/b.vcs
event 2.0 VEVENT $'SUMMARY:Modern\r\nDTSTART:20260401T100000Z\r\nDTEND:20260401T110000Z' >phone/c.ics

# look first: nothing is made by reading
step 1 'pimvobj: */pimvobj/pim.db: there is no store; * makes one, --store names another' contacts list
[ ! -e home ] || { echo "a list made something"; failures=$((failures + 1)); }
step 0 300 contacts count phone/cards.vcf
step 2 $'pimvobj: \'import\' needs to know of what; did you mean \'pimvobj contacts import phone/cards.vcf\'?\nTry *' import phone/cards.vcf

# in
step 3 "pimvobj: phone/bad.vcf:3: Error parsing vCard; nothing of this file is imported; --rejects FILE takes the others
    PHOTO;PNG;BASE64:QU?D
pimvobj: phone/cut.vcf:4: the text ends inside a record; it may have been cut: no END of 'Off Cut'
pimvobj: phone/joined.vcf:3: texts are joined without a line end: VCARDBEGIN:VCARD; what begins in this line isn't seen as a record of its own
303 contacts imported: 304 in 4 files, 303 new, 0 already there, 1 refused; 1 file refused; 30 pictures kept; 1 group made; the store is */pimvobj/pim.db
2 of 1871 lines not kept (1 replaced value, 1 BEGIN behind an END); pimvobj inspect --losses phone/joined.vcf tells each" contacts import phone
step 0 '0 contacts imported: 300 in 1 file, 0 new, 300 already there, 0 refused' contacts import phone/cards.vcf
step 0 "pimvobj: phone/a.vcs:7: RRULE of 'Lunch': not a rule that is understood; the item stays, without it: EVERY DAY
pimvobj: phone/b.vcs:5: DUE of 'Milk': not a date that is understood; the rest stays: tomorrow
pimvobj: phone/c.ics: this is iCalendar 2.0, read as far as it is like vCalendar 1.0
3 items imported: 3 in 3 files, 3 new, 0 already there, 0 refused
2 of 24 lines not kept (2 values that aren't understood); pimvobj inspect --losses FILE tells each" calendar import phone
step 3 "pimvobj: phone/a.vcs: no contact begins in it: it looks like a calendar, which 'calendar import' reads
0 contacts imported: *; 1 file refused" contacts import phone/a.vcs

# what was lost: told line by line, and put aside byte for byte
step 0 "contact 1: Second
phone/joined.vcf:2: N: dropped: a later line gave the field another value
phone/joined.vcf:3: END: dropped: a BEGIN in the line of an END begins nothing
phone/joined.vcf: 5 lines: 1 kept, 0 changed, 2 dropped, 2 frame" inspect --losses phone/joined.vcf
cat phone/cut.vcf <(printf '\r\n') phone/bad.vcf phone/joined.vcf >phone/damaged.vcf
step 3 "pimvobj: phone/damaged.vcf:14: texts are joined *
pimvobj: phone/damaged.vcf:9: PHOTO: rejected: a byte that belongs to no base64, in the card of Card Bad; put into aside.vcf
0 contacts imported: 4 in 1 file, 0 new, 3 already there, 1 refused
2 of 16 lines not kept (*); --report FILE tells each" contacts import phone/damaged.vcf --rejects aside.vcf --report report.jsonl
cmp aside.vcf phone/bad.vcf || failures=$((failures + 1))
jq -e '[.file == "phone/damaged.vcf", .rejected, .totals == {lines: 16, frame: 5, kept: 4, changed: 0, dropped: 2, unread: 5}] | all' report.jsonl >report.checks ||
  { cat report.jsonl; failures=$((failures + 1)); }
step 1 '*aside.vcf: is there already; --force replaces it' contacts import phone/damaged.vcf --rejects aside.vcf
step 1 '*report.jsonl: is there already; --force replaces it' contacts import phone/damaged.vcf --report report.jsonl
step 1 '*is named for the rejects too' contacts import phone/damaged.vcf --rejects new --report ./new
step 1 '*pim.db: is the store' contacts import phone/damaged.vcf -f --report home/.local/share/pimvobj/pim.db
step 1 '*damaged.vcf: is one of the files to read' contacts import phone -f --rejects phone/damaged.vcf
rm phone/damaged.vcf

# find
step 0 303 contacts count
step 0 1 contacts count muller142 KATHE '+49 30 142'
step 0 300 contacts count --group phone
step 1 "pimvobj: no group is called 'Phoen'; did you mean 'Phone'?" contacts list --group Phoen
step 0 $'Key  Name             Telephone\n142  Käthe Müller142  +49 30 142' contacts list müller142 '30 1' --fields key,name,number
step 0 $'name,number\r\nOff Cut,1\r' contacts list cut --fields=name,number --csv
step 0 $'Schlüssel  Name*Gruppen*Off Cut*' contacts list off --lang de
step 0 '{"tag":*"family_name":"Cut"*' contacts list cut --jsonl
step 0 $'Contact\n\nName:\nOff Cut\nNumber #0:\n1' contacts show 302
step 0 $'Key  Start*\n*2026-04-01 12:00 +02:00*Modern' calendar list modern
step 2 "pimvobj: --fields: no field is called 'nmae'; did you mean 'name'?*" contacts list --fields nmae

# out
step 0 '303 contacts exported' contacts export cards
step 1 "pimvobj: cards: isn't empty; --force adds to it; nothing is exported" contacts export cards
step 0 '1 contact exported' contacts export one.vcf off
step 1 'pimvobj: one.vcf: is there already; --force replaces it; nothing is exported' contacts export one.vcf
step 0 '303 contacts exported' contacts export one.vcf -f
step 0 303 contacts count one.vcf
step 0 $'BEGIN:VCARD\r\n*\r\nEND:VCARD\r\npimvobj: 1 contact exported' contacts export - off
step 0 $'BEGIN:VCALENDAR*VEVENT*VTODO*END:VCALENDAR\r\npimvobj: 3 items exported' calendar export --all -o -

# away
step 0 '300 contacts would be deleted' contacts delete --group Phone -n
step 0 '1 contact deleted, with 1 picture' contacts delete 10
step 1 $'pimvobj: no stored contact has the key 10\n1 contact deleted' contacts delete 10 11
step 0 '298 contacts deleted, with 29 pictures' contacts delete --group Phone
[ -z "$(find home -path '*CallerId/*' -type f)" ] || { echo "pictures stay behind"; failures=$((failures + 1)); }

# the whole of it back from the export
step 0 '300 contacts imported: 303 in 303 files, 300 new, 3 already there, 0 refused; 30 pictures kept' contacts import cards

[ "$failures" -eq 0 ] && echo "all is as it should be"
exit "$((failures > 0))"
