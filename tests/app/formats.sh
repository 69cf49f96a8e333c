#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Takes records to the forms of today and back, and files through the filters, as a person does.
# Usage: formats.sh PIMVOBJ ROOT [MEGABYTES], the memory that it may take; without it nobody looks.
set -u
program=$(realpath "$1") root=$(realpath "$2") megabytes=${3:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export HOME=$work/home TZ=UTC LC_ALL=C.UTF-8
unset XDG_DATA_HOME PIMVOBJ_STORE
failures=0
. "$root/tests/app/checks.sh"

# What goes to standard output alone, and to standard error.
out() { "$program" "$@" 2>/dev/null; }
err() { "$program" "$@" 2>&1 >/dev/null; }

cp "$root"/samples/{friends,desktop}.vcf "$root"/samples/calendar.vcs .
{
  printf 'BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ann\\, Lee\r\nN:Lee;Ann;;;\r\nTEL;TYPE="cell,voice":1\r\n'
  printf 'X-ODD:a\r\nEND:VCARD\r\nBEGIN:VCARD\r\nVERSION:4.0\r\nFN:Bob\r\nN:Ray;Bob;;;\r\nEND:VCARD\r\n'
} >new.vcf
printf 'BEGIN:VCALENDAR\nVERSION:2.0\nBEGIN:VEVENT\nSUMMARY:a\\, b\nDTSTART:20100105T120000Z\nEND:VEVENT\nEND:VCALENDAR\n' >new.ics
printf 'BEGIN:VCARD\nN:M\xfcller;J\xf6rg\nNOTE;CHARSET=UTF-8:\xe9\nTEL:1\nEND:VCARD\n' >latin.vcf
: >empty.vcf

# wrong usage, of which nothing is done
while IFS='|' read -r command pattern; do
  check "usage: $command" 2 "$pattern" $command
done <<'ROWS'
convert|'convert' needs FILE
convert friends.vcf|'convert' needs --to FORM
convert friends.vcf --to vcf4|--to takes vcard4, vcard3, jcard, csv or icalendar, not 'vcf4'
convert friends.vcf --to vcard4 --csv-columns none|--csv-columns goes with --to csv
convert friends.vcf --to csv --groups|--groups goes with --to vcard4, vcard3 or jcard
convert friends.vcf --to vcard4 --split|--split needs a folder
convert friends.vcf --to vcard4 --split --groups -o x|take either --split or --groups
convert friends.vcf --to vcard4 --steps nul|--steps goes with --prepare
contacts import friends.vcf --steps nul|--steps goes with --prepare
contacts export x --to icalendar|--to takes vcard4, vcard3, jcard or csv, not 'icalendar'
calendar export x --to vcard4|--to takes icalendar, not 'vcard4'
prepare|'prepare' needs FILE
prepare new.vcf --steps nul,types,none|--steps takes unicode, .*, not 'none'
prepare new.vcf new.ics|extra operand 'new.ics'
redact new.vcf new.ics|extra operand 'new.ics'
charsets|'charsets' needs FILE
ROWS
same nothing-made '' "$(ls | grep -x 'x\|none')"

# each form, into a file and to standard output, the same each time
while read -r form file first; do
  check "$form" 0 "^[1-9] (contact|item)s written as $form$" convert "$file" --to "$form" -o "out.$form"
  check "$form-again" 1 "^pimvobj: out.$form: is there already; --force replaces it" convert "$file" --to "$form" -o "out.$form"
  check "$form-forced" 0 "written as $form$" convert "$file" --to "$form" -o "out.$form" -f
  same "$form-begins" "$first" "$(head -n 1 "out.$form" | tr -d '\r' | cut -d, -f1)"
  same "$form-stdout" '' "$(out convert "$file" --to "$form" | cmp - "out.$form" 2>&1)"
  same "$form-stdin" '' "$(out convert - --to "$form" <"$file" | cmp - "out.$form" 2>&1)"
done <<'ROWS'
vcard4 friends.vcf BEGIN:VCARD
vcard3 friends.vcf BEGIN:VCARD
jcard friends.vcf [
csv friends.vcf First Name
icalendar calendar.vcs BEGIN:VCALENDAR
ROWS
same versions 'VERSION:4.0 VERSION:3.0 VERSION:2.0' \
  "$(for form in vcard4 vcard3 icalendar; do sed -n 2p "out.$form"; done | tr -d '\r' | paste -sd' ')"
same jcard '3 vcard' "$(jq -r '"\(length) \(.[0][0])"' out.jcard)"
check split 0 '^3 contacts written as vcard4$' convert friends.vcf --to vcard4 --split -o cards
same split-files 'Alice Martin.vcf Jürgen Müller.vcf Pat Sample.vcf' "$(ls cards | paste -sd' ')"
same split-cards '1 1 1' "$(grep -c '^BEGIN:VCARD' cards/* | sed 's/.*://' | paste -sd' ')"
check split-again 1 "cards: isn't empty; --force adds to it" convert friends.vcf --to vcard4 --split -o cards
check split-items 0 '^4 items written as icalendar$' convert calendar.vcs --to icalendar --split -o items
same split-items 4 "$(ls items/*.ics | wc -l)"
check groups 0 . convert friends.vcf --to vcard4 --groups -o groups.vcf
same groups '2 yes' "$(grep -c '^KIND:group' groups.vcf) $(grep -q '^MEMBER:urn:uuid:' groups.vcf && echo yes)"
same groups-besides "$(grep -c . out.vcard4)" "$(sed '/^KIND:group/,$d' groups.vcf | head -n -4 | grep -c .)"
printf '# mine\nWho = name.given_name\n\nPhone = telephones[0].number\n' >columns.txt
same columns 'Who,Phone Alice,+44 20 7946 0101' "$(out convert friends.vcf --to csv --csv-columns columns.txt | head -n 2 | tr -d '\r' | paste -sd' ')"
check columns-wrong 1 '^pimvobj: friends.vcf: ' convert friends.vcf --to csv --csv-columns friends.vcf

# what the form can't hold
check lossy 0 '^pimvobj: contact 3 \(Pat Sample\): photo: dropped: the form has no place for it$' convert friends.vcf --to csv
check lossy-summary 0 '^pimvobj: 2 losses \(1 no-property, 1 type-ignored\)$' convert friends.vcf --to csv
check strict 4 'written as csv' convert friends.vcf --to csv --strict
check strict-none 0 'written as vcard4' convert desktop.vcf --to vcard4 --strict
check report 0 'report.json has them all' convert friends.vcf --to csv --report report.json
same report 'csv 2 {"record":2,"name":"Pat Sample","field":"photo","verdict":"dropped","why":["no-property"]}' \
  "$(jq -rc '"\(.form) \(.losses | length) \(.losses[-1])"' report.json)"

# several files, of which some can't be read, or hold nothing
check one-fails 1 '^pimvobj: no-such.vcf: ' convert friends.vcf no-such.vcf desktop.vcf --to vcard3 -o some.vcf
same one-fails 4 "$(grep -c '^BEGIN:VCARD' some.vcf)"
check nothing-in-one 3 '^pimvobj: empty.vcf: ' convert friends.vcf empty.vcf --to vcard3
check nothing 3 '^no contact; nothing is written$' convert empty.vcf --to vcard3 -o none.vcf
same nothing-written no "$([ -e none.vcf ] && echo yes || echo no)"
check other-kind 3 '^pimvobj: calendar.vcs: ' convert calendar.vcs --to vcard4

# files of today, through prepare
check prepare 0 '^pimvobj: new.vcf:1-7: vcard: the card became vCard 2.1$' prepare new.vcf
check prepare-loss 0 '^pimvobj: new.vcf:6: X-ODD: dropped: the form has no place for it$' prepare new.vcf
check prepare-strict 4 '^pimvobj: 1 loss \(1 no-property\)$' prepare new.vcf --strict
check prepare-report 0 'losses.json has them all' prepare new.vcf --report losses.json -o old.vcf
same prepare-report 'prepared [{"file":"new.vcf","line":6,"field":"X-ODD","verdict":"dropped","why":["no-property"]}]' \
  "$(jq -rc '"\(.form) \(.losses)"' losses.json)"
same prepare-out '' "$(out prepare - <new.vcf | cmp - old.vcf 2>&1)"
same prepare-twice '' "$(err prepare old.vcf; out prepare old.vcf | cmp - old.vcf 2>&1)"
same prepare-none '' "$(err prepare new.vcf --steps nul,times; out prepare new.vcf --steps nul,times | cmp - new.vcf 2>&1)"
for file in friends.vcf desktop.vcf calendar.vcs; do
  same "prepare-$file" '' "$(err prepare $file; out prepare $file | cmp - $file 2>&1)"
done
check prepare-itself 1 'new.vcf: is a file that is read' prepare new.vcf -o ./new.vcf -f
check prepare-folder 1 'cards: ' prepare cards
same piped '2 contacts imported: 2 in 1 file, 2 new, 0 already there, 0 refused; the store is piped.db' \
  "$(out prepare new.vcf | out --store piped.db contacts import - | head -n 1)"
check convert-prepared 0 '^2 contacts written as vcard3$' convert new.vcf --prepare --to vcard3 -o again.vcf
same convert-prepared 'FN:Ann\, Lee' "$(grep -m 1 ^FN again.vcf | tr -d '\r')"
check convert-items 0 '^1 item written as icalendar$' convert new.ics --prepare --to icalendar -o again.ics
same convert-items 'SUMMARY:a\, b' "$(grep ^SUMMARY again.ics | tr -d '\r')"

# what is imported so keeps its original, and the lines are those of the file
check import 0 '^2 contacts imported' --store pim.db contacts import new.vcf --prepare
check import-names 0 'Ann, Lee|Ann Lee' --store pim.db contacts list
same import-cell 1 "$(out --store pim.db contacts list --json | jq '[.contacts[].telephones[] | select(.number == "1")] | length')"
same import-pipe "$(out --store piped.db contacts list --fields name,number --csv)" "$(out --store pim.db contacts list --fields name,number --csv)"
check originals 0 '^1 original exported$' --store pim.db original export originals
same originals '' "$(find originals -type f -exec cmp {} new.vcf \; 2>&1)"
same shown '' "$(for key in 1 2; do out --store pim.db original show contact $key; done | cmp - new.vcf 2>&1)"
check import-items 0 '^1 item imported' --store pim.db calendar import new.ics --prepare
check import-steps 0 . --store steps.db contacts import new.vcf --prepare --steps nul
same import-steps 0 "$(out --store steps.db contacts list --json | jq '[.contacts[] | select(.name.formatted_name == "Ann, Lee")] | length')"

# out of a store, the same as of the file and each time
check export 0 '^2 contacts written as vcard4$' --store pim.db contacts export store.vcf --to vcard4
check export-again 1 'store.vcf: is there already' --store pim.db contacts export store.vcf --to vcard4
same export-twice '' "$(out --store pim.db contacts export - --to vcard4 | cmp - store.vcf 2>&1)"
same export-chosen 'FN:Bob' "$(out --store pim.db contacts export - --to vcard4 Bob | grep ^FN | tr -d '\r')"
check export-split 0 . --store pim.db contacts export each --to jcard --split
same export-split 2 "$(ls each/*.json | wc -l)"
check import-calendar 0 . --store cal.db calendar import calendar.vcs
check export-items 0 '^3 items written as icalendar$' --store cal.db calendar export all.ics --to icalendar --all
same export-items '' "$(out --store cal.db calendar export - --to icalendar --all | cmp - all.ics 2>&1)"

# charsets shows, and decides nothing
check charsets 0 '^latin.vcf:2: N$' charsets latin.vcf
check charsets-fixed 0 "^latin.vcf:3: NOTE \(its own CHARSET isn't that of its bytes\)$" charsets latin.vcf
check charsets-first 0 'pimvobj contacts import latin.vcf --code-page CP1252$' charsets latin.vcf
check charsets-none 0 '^friends.vcf: all lines are text in their charset$' charsets friends.vcf
check charsets-file 1 '^pimvobj: no-such: ' charsets no-such friends.vcf
same charsets-json 'latin.vcf CP1252 2 Müller;Jörg null' \
  "$(out charsets latin.vcf --json | jq -r '"\(.file) \(.charsets[0]) \(.count) \(.lines[0].readings.CP1252) \(.lines[0].readings.CP932)"')"
same charsets-reads 'Jörg Müller' "$(out show latin.vcf --code-page "$(out charsets latin.vcf --json | jq -r '.charsets[0]')" | sed -n 4p)"

# redact keeps all but what is private
check redact 0 '^$' redact friends.vcf -o shown.vcf
check redact-again 1 'is there already' redact friends.vcf -o shown.vcf
check redact-itself 1 'is a file that is read' redact friends.vcf -o friends.vcf -f
same redact-size "$(wc -c <friends.vcf)" "$(wc -c <shown.vcf)"
same redact-private '' "$(grep -i 'alice\|martin\|mueller\|orchard' shown.vcf)"
same redact-names "$(sed 's/[:;=].*//; /^ /d' desktop.vcf)" "$(out redact - <desktop.vcf | sed 's/[:;=].*//; /^ /d')"
same redact-account "$(out inspect --losses --json friends.vcf | jq -c '.totals')" "$(out inspect --losses --json shown.vcf | jq -c '.totals')"

# Memory doesn't grow with the text. The program still waits for the end of it when it is looked at,
# and has read all but what the pipe holds.
peak() {
  mkfifo feed
  "$program" "$@" <feed >/dev/null 2>&1 &
  exec 9>feed
  for ((i = 0; i < 100; ++i)); do cat block; done >&9
  sed -n 's/^VmHWM:[^0-9]*\([0-9]*\) kB/\1/p' "/proc/$!/status"
  exec 9>&-
  wait $! || echo failed
  rm feed
}
if [ -n "$megabytes" ] && [ -e /proc/self/status ]; then
  while (($(stat -c %s block 2>/dev/null || echo 0) < 1048576)); do
    cat block friends.vcf new.vcf >bigger 2>/dev/null
    cat bigger bigger >block
  done
  for command in 'prepare -' 'redact -' 'charsets -' 'convert - --to vcard4' 'convert - --to csv --prepare'; do
    kilobytes=$(peak $command)
    [ "$kilobytes" -le $((megabytes * 1024)) ] || same "memory: $command" "$megabytes MB at most" "$kilobytes kB"
  done
fi

[ "$failures" -eq 0 ] && echo "all is as it should be"
exit "$((failures > 0))"
