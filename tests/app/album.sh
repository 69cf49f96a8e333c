#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Writes albums as a person does, and reads what their scripts would find. Usage: album.sh PIMVOBJ
# ROOT [MEGABYTES], the memory that it may take; without it nobody looks.
set -u
program=$(realpath "$1") root=$(realpath "$2") megabytes=${3:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export HOME=$work/home TZ=Europe/Berlin LC_ALL=C.UTF-8
unset XDG_DATA_HOME PIMVOBJ_STORE
failures=0
. "$root/tests/app/checks.sh"

# page FILE QUERY: what jq makes of it.
page() { python3 "$root/tests/app/album_page.py" "$1" | jq -rc "$2"; }

cp "$root"/samples/{friends,desktop,phone-japan}.vcf "$root"/samples/calendar.vcs .
picture=iVBORw0KGgo=
{
  printf 'BEGIN:VCARD\r\nVERSION:2.1\r\nN:</script><script>;<!--;"\r\nFN:other\r\nTEL;CELL;PREF:+49 1\r\n'
  printf 'EMAIL;WORK:a@b?bcc=c\r\nURL:javascript:alert(1)\r\nADR;HOME:;;1 Road;Town;;12345;\r\nORG:Firm;Unit;Team\r\n'
  printf 'NOTE;ENCODING=QUOTED-PRINTABLE:=01=7F=E2=80=A8=ED=A0=80\r\nBDAY:16040229\r\nX-GROUP:A\r\nX-GROUP:B\r\n'
  printf 'PHOTO;ENCODING=BASE64;TYPE=JPEG:%s\r\n\r\nX-ODD:1\r\nEND:VCARD\r\n' $picture
  printf 'BEGIN:VCARD\r\nN:Z\r\nBDAY:1980-03-04\r\nPHOTO;ENCODING=BASE64:PHN2Zz4=\r\n\r\nEND:VCARD\r\n'
} >hostile.vcf
printf 'BEGIN:VCARD\r\nN:One\r\nEND:VCARD\r\nBEGIN:VCARD\r\nN:Two\r\nTEL;:1\r\nEND:VCARD\r\nX-LOST:1\r\n' >rejected.vcf
printf '\xff\xd8\xff' >picture.jpg
mkdir both && cp friends.vcf both/a.vcf && cp desktop.vcf both/c.VCF && cp calendar.vcs both/b.vcs

# refusals, of which nothing is written
while IFS='|' read -r status command pattern; do
  check "$command" "$status" "$pattern" $command
done <<'ROWS'
2|contacts album|nothing says where to: name a file, or - for standard output
2|album friends.vcf|nothing says where to: -o FILE names the page
2|album calendar.vcs -o x.html --from 2010-02-30|--from takes a day, .* not '2010-02-30'
2|album calendar.vcs -o x.html --from 2010-02 --to 2010-01-31|--from is behind --to
2|album friends.vcf -o x.html --from 2010|--from and --to go with a calendar
2|album friends.vcf -o x.html --steps nul|--steps goes with --prepare
1|album friends.vcf -o friends.vcf --force|friends.vcf: is a file that is read
1|album none.vcf -o x.html|none.vcf: .*No such file
1|contacts album x.html --store none.db|none.db
3|album picture.jpg -o x.html|picture.jpg: no record begins in it: it looks like a JPEG picture
3|album friends.vcf -o x.html --as vcalendar|friends.vcf: no item begins in it
0|album calendar.vcs -o x.html --to 1990 --as vcalendar --force|^1 item in x.html$
ROWS
same nothing-made '["memo"]' "$(page x.html '[.records[].kind]')"
same nothing-left x.html "$(ls | grep html)"

# each page is safe and its policy fits, and nothing stands between it on standard output
for file in friends.vcf desktop.vcf phone-japan.vcf calendar.vcs hostile.vcf; do
  check "$file" 0 "^[1-4] (contact|item)s? in ${file%.*}.html$" album "$file" -o "${file%.*}.html"
  same "$file is safe" 'true true files' "$(page "${file%.*}.html" '"\(.policy) \(.safe) \(.album.source)"')"
  same "$file to a pipe" "$(page "${file%.*}.html" '.records[0]')" \
    "$("$program" album - -o - <"$file" 2>/dev/null >pipe.html; page pipe.html '.records[0] | .file = '"\"$file\"")"
done
check again 1 'friends.html: is there already; --force replaces it' album friends.vcf -o friends.html
check forced 0 '3 contacts in' album friends.vcf -o friends.html --force
same title '<title>friends.vcf' "$(grep -o '<title>friends.vcf' friends.html)"
same no-store '' "$(ls -A home 2>/dev/null)"

# what becomes of a contact
same hostile '{"name":"<!-- \" </script><script>","short":"<!-- </script><script>","sort":"</script><script> <!--","groups":["A","B"],"birthday":"--02-29","picture":true,"line":1}' \
  "$(page hostile.html '.records[0] | del(.fields, .file, .marks)')"
same fields '[["full-name","other"],["number","+49 1",["pref","cell"]],["mail","a@b?bcc=c",["work"]],["url","javascript:alert(1)"],["address","1 Road\n12345\nTown",["home"]],["organisation","Firm"],["unit","Unit"],["unit","Team"],["birthday","--02-29"]]' \
  "$(page hostile.html '.records[0].fields | map(select(.[0] != "note"))')"
same control '"\u0001\u007f\u2028"' "$(page hostile.html '.records[0].fields[] | select(.[0] == "note")[1][:3] | tojson' | jq -R 'fromjson' | jq -a .)"
same pictures "[[0,\"image/png\",\"$(base64 -d <<<$picture | sha256sum | cut -d' ' -f1)\"]]" "$(page hostile.html .pictures)"
check odd-picture 0 'contact 2 \(Z\): its picture .* is none that a page shows; it goes without' album hostile.vcf -o - --quiet
same marks '[[16,16,"dropped","X-ODD","there is no field for it","X-ODD:1"]]' \
  "$(page hostile.html '.records[0].marks | map(select(.[3] == "X-ODD"))')"
same second '["hostile.vcf",18,"1980-03-04",null]' "$(page hostile.html '.records[1] | [.file, .line, .birthday, .picture]')"

# texts that are rejected, of which the lines behind belong to the last record
check rejected 3 'rejected.vcf:6: .*what stands behind it isn' album rejected.vcf -o rejected.html --quiet
same rejected-marks '[[6,6,"rejected","TEL","TEL;:1"],[7,8,"unread","","END:VCARD\nX-LOST:1"]]' \
  "$(page rejected.html '.records[1].marks | map(del(.[4]))')"
(printf 'junk\n' && cat phone-japan.vcf) >junk.vcf
check junk 0 '2 contacts in junk.html' album junk.vcf -o junk.html --lang de
same files '[["junk.vcf",1]] de' "$(page junk.html '"\([.files[] | [.file, .marks[0][0]]]) \(.album.lang)"')"
(printf 'X' && head -c 3000000 /dev/zero | tr '\0' x && printf '\n' && cat phone-japan.vcf) >long.vcf
check long 0 '2 contacts in long.html' album long.vcf -o long.html
same long-head 400 "$(page long.html '.files[0].marks[0][5] | length')"

# several files and kinds: the first one decides, or the option
check two-kinds 3 'calendar.vcs: no contact begins in it: it looks like a calendar' album friends.vcf calendar.vcs desktop.vcf -o two.html
same two-kinds '["desktop.vcf","friends.vcf"]' "$(page two.html '[.records[].file] | unique')"
check folder 0 '^4 contacts in folder.html$' album both -o folder.html
check folder-as 0 '^4 items in folder.html$' album both -o folder.html --as vcalendar -f
printf 'BEGIN:VCARD\nVERSION:4.0\nN:New;Ann\nFN:Ann\nTEL;TYPE="cell,voice":1\nEND:VCARD\n' >new.vcf
check prepared 0 '^1 contact in new.html$' album new.vcf -o new.html --prepare --steps vcard
printf 'BEGIN:VCARD\nN:M\xfcller\nEND:VCARD\n' >latin.vcf
check code-page 0 '1 contact' album latin.vcf -o latin.html --code-page CP1252
same code-page Müller "$(page latin.html '.records[0].name')"

# a store's
store() { "$program" --store pim.db "$@"; }
store contacts import friends.vcf hostile.vcf >import.txt 2>&1
for noun in calendar todo memo; do store $noun import calendar.vcs; done >>import.txt 2>&1
check stored 0 '^5 contacts in stored.html$' --store pim.db contacts album stored.html
same stored "$(page friends.html '[.records[] | del(.file, .line, .marks)]')" "$(page stored.html '.records[:3]')"
same stored-source '["store","Europe/Berlin"]' "$(page stored.html '[.album.source, .album.zone]')"
check group 0 '^1 contact in group.html$' --store pim.db contacts album group.html --group a
check words 0 '^no contact is chosen; nothing is written to none.html$' --store pim.db contacts album none.html nobody
check is-store 1 'pim.db: is the store' --store pim.db contacts album pim.db --force
cp "$root/tests/data/store-v1.db" v1.db
check missing 1 'contact 1 .*: its picture zevo1.jpg is missing; it goes without' --store v1.db contacts album v1.html
same without-it null "$(page v1.html '.records[0].picture')"
check kinds 0 '^4 items in kinds.html$' --store pim.db calendar album kinds.html
check todos 0 '^1 item in todos.html$' --store pim.db todo album -o todos.html passport

# an item, over a change of clocks, within the days asked for
check days 0 '^2 items in days.html$' album calendar.vcs -o days.html --from 2026-10 --to 2026-10
same days '{"kind":"event","title":"Choir practice","allDay":false,"length":5400,"times":[[1791219600,604800,3],[1793037600,1,1]],"wall":[[1791226800,604800,3],[1793041200,1,1]],"isCut":true,"rule":{"unit":"week","every":1,"days":["MO"],"until":1797877800},"fields":[["location","Parish hall"],["category","APPOINTMENT"]],"line":3}' \
  "$(page days.html '.records[0] | del(.file)')"
same days-head '["calendar","2026-10-01","2026-10-31"]' "$(page days.html '.album | [.kind, .from, .to]')"
same kinds '["event","event","todo","memo"] ["needs-action"] 1' \
  "$(page kinds.html '"\([.records[].kind]) \([.records[] | .status // empty]) \([.records[] | .priority // empty][0])"')"
{
  printf 'BEGIN:VCALENDAR\r\n'
  for rule in 'MP2 1+ 1- MO TU #3' 'MD1 5 1- #0' 'YD1 60 #2' 'YM2 3 #2' 'D3 #2'; do
    printf 'BEGIN:VEVENT\r\nDTSTART:20100105T120000Z\r\nRRULE:%s\r\nSTATUS:TENTATIVE\r\nCLASS:PRIVATE\r\nX-HOLIDAY:YES\r\nEND:VEVENT\r\n' "$rule"
  done
  printf 'END:VCALENDAR\r\n'
} >rules.vcs
check rules 0 '^5 items' album rules.vcs -o rules.html
same rules '[{"unit":"month","every":2,"days":["1MO","1TU","-1MO","-1TU"],"count":3},{"unit":"month","every":1,"monthDays":[5,-1]},{"unit":"year","every":1,"yearDays":[60],"count":2},{"unit":"year","every":2,"months":[3],"count":2},{"unit":"day","every":3,"count":2}]' \
  "$(page rules.html '[.records[].rule]')"
check no-days 0 '^no item is chosen; nothing is written to none.html$' album rules.vcs -o none.html --to 1990
same rest '[["class","private"],["holiday","✓"]] tentative' "$(page rules.html '.records[0] | "\(.fields) \(.status)"')"

# many contacts with pictures take no more memory than some of them
if [ -n "$megabytes" ]; then
  body=$(head -c 30000 /dev/zero | base64 -w 0)
  for i in $(seq 1500); do
    printf 'BEGIN:VCARD\nN:Name %s\nPHOTO;ENCODING=BASE64:/9j/%s\n\nEND:VCARD\n' "$i" "$body"
  done >many.vcf
  "$program" album many.vcf -o many.html --quiet >/dev/null & pid=$!
  most=0
  while now=$(awk '/VmHWM/ {print $2}' "/proc/$pid/status" 2>/dev/null) && [ -n "$now" ]; do most=$now; done
  wait "$pid"
  same many 1500 "$(page many.html '.pictures | length')"
  [ "$most" -le $((megabytes * 1024)) ] || same memory "at most $megabytes MB" "$most KB"
fi

[ "$failures" -eq 0 ] && echo "all is as it should be"
exit "$((failures > 0))"
