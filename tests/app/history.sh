#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Imports, looks at what the store remembers of them, and takes them back, as a person does.
# Usage: history.sh PIMVOBJ ROOT
set -u
program=$(realpath "$1") root=$(realpath "$2")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" || exit 1
export HOME=$work/home TZ=Europe/Berlin LC_ALL=C.UTF-8 PIMVOBJ_STORE=$work/pim.db
unset XDG_DATA_HOME
pictures="$HOME/.local/share/Tessaly Works/Tessaly Deskmate IV/CallerId"
failures=0
. "$root/tests/app/checks.sh"

history() { "$program" history --json | jq -rc "$1"; }
# What the store holds but for what it remembers of imports.
rows() {
  sqlite3 pim.db "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT GLOB '*Origin*' AND
    (name GLOB 'Contact*' OR name GLOB 'Calendar*' OR name GLOB 'Picture*') ORDER BY name" |
    while read -r table; do sqlite3 pim.db "SELECT '$table', * FROM \"$table\""; done
}
keys() { "$program" contacts list "$@" --fields key --csv | tail -n +2 | tr -d '\r'; }
# The bytes of all that the program could touch.
tree() { find . -type f -exec md5sum {} + | sort; }

cp "$root"/samples/{friends,desktop}.vcf "$root"/samples/calendar.vcs .
cp desktop.vcf $'odd\n:\xff.vcf'

# wrong usage
while IFS='|' read -r command pattern; do
  check usage 2 "$pattern" $command
done <<'ROWS'
undo 0|'0' is no number of an import
undo x|'x' is no number of an import
undo 1 2|extra operand '2'
histroy|did you mean 'history'
tidy|did you mean 'pimvobj store tidy'
original|Commands of .original.
original lst|did you mean 'list'
original drop --import -1|takes the number of an import, not '-1'
original export|'original export' needs DIR
original export -|into a folder
original show contact|needs contact|calendar|todo|memo KEY
original show contcat 1|did you mean 'contact'
original show contact x|'x' is no key
contacts import friends.vcf --json|--json goes with --dry-run
ROWS

# nothing there yet
for command in history undo 'original list' 'original drop' 'store tidy'; do
  check no-store 1 'pim.db: there is no store' $command
done
same no-store no "$([ -e pim.db ] && echo yes || echo no)"
check off-first 0 '^imports keep no copies .*; the store is .*pim.db$' original off
check empty 0 '^pimvobj: nothing has been imported yet$' history
check empty-undo 1 '^pimvobj: .*no import' undo
check off 0 '^1 contact imported' contacts import desktop.vcf
check off-list 0 'imports keep no copies' original list
check off-show 1 'contact 1 came from lines 1 to [0-9]* of desktop.vcf .import 1., of which no copy is kept' original show contact 1
check on 0 '^imports keep a copy' original on
check undone 0 '^import 1 taken back: 1 contact removed$' undo

# what was imported, when, from which files
before=$(rows)
check import 0 '^4 contacts imported: 4 in 2 files, 4 new' contacts import friends.vcf desktop.vcf
imported=$(rows)
check again 0 '^0 contacts imported' contacts import --group 'Old phone' friends.vcf $'odd\n:\xff.vcf'
same calendar 0 "$("$program" calendar import - <calendar.vcs >/dev/null; echo $?)"
same entries '[1,"undone",1,1,0] [2,"done",2,4,0] [3,"done",2,0,4]' \
  "$(history '.imports[:3][] | [.number, .state, (.files | length), .totals.new, .totals.already_there]' | paste -sd' ')"
same start '{"command":"contacts import","options":["--group=Old phone"]}' "$(history '.imports[2] | {command, options}')"
same sums "$(sha256sum <friends.vcf | cut -c-64) $(stat -c %s friends.vcf)" "$(history '.imports[1].files[0] | "\(.sha256) \(.bytes)"')"
check words 0 '^  friends.vcf: 3 records, 3 new, 0 already there, 0 refused; 1 line not kept$' history
check local-time 0 "^3  20..-..-.. ..:.. \+0[12]:00  contacts import '--group=Old phone'$" history

# every file comes back byte for byte, and takes nobody's place
check list 0 '^2 +2 .* yes +[0-9a-f]{64}  friends.vcf$' original list
mkdir out && ln -s "$work/outside" out/desktop.vcf
check export 0 '^6 originals exported$' original export out
same from-stdin '' "$(cmp calendar.vcs out/stdin.vcs 2>&1)"
same friends '' "$(cmp friends.vcf out/friends.vcf 2>&1)"
same no-link-followed '' "$(cmp desktop.vcf 'out/desktop(2).vcf' 2>&1; ls outside 2>/dev/null)"
same odd-name '' "$(cmp desktop.vcf $'out/odd\xef\xbf\xbd.vcf' 2>&1)"
check export-again 0 '^2 originals exported$' original export out --import 2
same export-counter '' "$(cmp friends.vcf 'out/friends(2).vcf' 2>&1 && [ ! -e outside ])"
check export-none 1 'no import has the number 99' original export out --import 99
check export-file 1 'friends.vcf: ' original export friends.vcf

# the lines of one record
key=$(keys Sean)
same show '' "$("$program" original show contact "$key" | cmp - desktop.vcf 2>&1)"
same show-first "$(sed '/^END:VCARD/q' friends.vcf)" "$("$program" original show contact "$(sqlite3 pim.db 'SELECT min(contact_id) FROM Contacts')")"
check show-kind 1 '^pimvobj: no stored to-do has the key 999$' original show todo 999
if command -v script >/dev/null; then
  same show-terminal '1:BEGIN:VCARD' "$(script -qec "'$program' original show contact $key" /dev/null </dev/null | head -1 | tr -d '\r')"
fi

# a damaged original is told and spoils no other; dropped ones leave the history
cp pim.db kept.db
sqlite3 pim.db "UPDATE Originals SET content = CAST(substr(content, 1, 20) || X'5A' || substr(content, 22) AS BLOB) WHERE
  original_id = (SELECT original_id FROM ImportFiles WHERE name = 'friends.vcf')"
check damaged 1 '^1 original exported$' original export damaged --import 2
same damaged desktop.vcf "$(ls damaged)"
mv kept.db pim.db
rm -f pim.db-wal pim.db-shm
check drop 0 '^[1-9] originals dropped' original drop --import 2
same dropped '[false,false]' "$(history '[.imports[1].files[].kept]')"
check dropped 1 'of which no copy is kept' original show contact "$key"

# taken back: all but what was changed since
check dry-run 0 '^would take back import 4: [0-9]+ items$' undo --dry-run
check undo-calendar 0 '^import 4 taken back: [0-9]+ items removed$' undo
check undo-group 0 '^import 3 taken back: 1 group, 4 group memberships removed$' undo
same undo-group "$imported" "$(rows)"
sqlite3 pim.db "UPDATE Contacts SET org_title = 'Chief' WHERE contact_id = $key"
untouched=$(tree)
check dry-run 1 "^pimvobj: contact $key .Dr. Sean O'Brien. was changed since import 2; it would stay$" undo 2 --dry-run
same dry-run "$untouched" "$(tree)"
check changed 1 "^pimvobj: 'pimvobj undo 2 --force' takes it too$" undo 2
same changed "$key" "$(keys)"
same pictures-gone 0 "$(find "$pictures" -type f | wc -l)"
check in-part 0 '^  undone in part 20.*: 3 records taken back$' history
check force 0 '^import 2 taken back: 1 contact removed$' undo 2 --force
same as-before "$before" "$(rows)"
check twice 1 '^pimvobj: .*import 2 is undone already' undo 2
check nothing-left 1 '^pimvobj: .*no import' undo
check no-such 1 '^pimvobj: .*99' undo 99
same undone-json '{"contacts":3,"kept_groups":["Friends"]}' "$("$program" contacts import friends.vcf >/dev/null
  sqlite3 pim.db "INSERT INTO Contacts (contact_id, formatted_name) VALUES (500, 'Host');
    INSERT INTO Contacts_ContactGroups (contact_id, group_id) SELECT 500, group_id FROM ContactGroups WHERE group_name = 'Friends'"
  "$program" undo --json 2>/dev/null | jq -c '{contacts, kept_groups}')"

# pictures that nobody has, and those that can't be made
check picture 0 '1 picture kept' contacts import friends.vcf
touch "$pictures/zevo01234567-89AB-CDEF-0123-456789ABCDEF.png" "$pictures/own.png" "$pictures/zevo.png"
check tidy 0 '^1 picture that no contact of the store has; --delete removes it$' store tidy
check tidy-delete 0 '^1 picture that no contact of the store has removed$' store tidy --delete
same tidy '{"pictures":[],"removed":false}' "$("$program" store tidy --json | jq -c '{pictures, removed}')"
same tidy-others 3 "$(find "$pictures" -type f | wc -l)"
check delete 0 '^4 contacts deleted, with 1 picture$' contacts delete $(keys)
check picture 0 . contacts import --no-originals friends.vcf
rm -r "$pictures"
check picture-again 0 '^[0-9]+ contacts? exported$' contacts export again
same picture-again 1 "$(find "$pictures" -type f | wc -l)"
export HOME=$work/blocked
mkdir -p "$HOME/.local/share" && : >"$HOME/.local/share/Tessaly Works"
check no-place 0 '^[0-9]+ contacts? exported$' contacts export cards
same no-place 1 "$(cat cards/*.vcf | grep -c PHOTO)"
(
  unset HOME
  cd / && "$program" contacts export - | grep -c PHOTO
) >count
same no-home 1 "$(cat count)"
# a dry run writes nothing at all, into a place that can't be written either: no store, this one, and
# one of the first version
export HOME=$work/dry/home
mkdir -p "$HOME" && cp ./*.vc[fs] dry && cp pim.db dry/now.db && cp "$root/tests/data/store-v1.db" dry/first.db
chmod -R a-w dry
before=$(tree)
for noun in contacts calendar todo memo; do
  file=dry/calendar.vcs
  [ $noun = contacts ] && file=dry/friends.vcf
  for store in none now first; do
    check "dry-$noun-$store" 0 "^$file:[0-9]+: (new|already there as [0-9]+): |^0 .* would be imported" \
      --store "dry/$store.db" $noun import --dry-run $file
    same "dry-$noun-$store" "$before" "$(tree)"
  done
done
chmod -R u+w dry
# a pipe that is closed takes the pictures of a dry run along
mkdir temporary
for i in {1..2000}; do sed 's/^N:.*/&'"$i/" friends.vcf; done >many.vcf
TMPDIR=$work/temporary "$program" contacts import --dry-run many.vcf | head -1 >/dev/null
same closed-pipe '' "$(ls temporary)"

[ "$failures" -eq 0 ] && echo "all is as it should be"
exit "$((failures > 0))"
