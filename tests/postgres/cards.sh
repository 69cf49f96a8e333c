# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Files of cards for imports that are disturbed, and what must have become of them. Sourced.

# make_files FOLDER FILES: of 1 to 4 cards, each with a name of its own; all have a group, some a
# picture. The name tells the file: FOLDER-FileN-CardM.
make_files() {
  local file card
  mkdir "$1"
  for ((file = 0; file < $2; ++file)); do
    for ((card = 0; card <= file % 4; ++card)); do
      printf 'BEGIN:VCARD\r\nN:%s-File%d-Card%d;John\r\nTEL;CELL:%d\r\nX-GROUP:Friends\r\n' "$1" "$file" "$card" "$card"
      ((file % 10)) || printf 'PHOTO;PNG;BASE64:%s\r\n\r\n' "$(printf 'picture %s %d' "$1" "$file" | base64)"
      printf 'END:VCARD\r\n'
    done >"$1/$file.vcf"
  done
}

# The names in cards, or in the output of `contacts list --json`.
names_of_cards() { sed -n 's/^N:\([^;]*\);.*/\1/p' | sort; }
names_of_list() { jq -r '.contacts[].name.family_name' | sort; }

# names_differ WANTED FOUND: tells what is amiss with names in a file; fails if nothing is.
names_differ() {
  cmp -s "$1" "$2" && return 1
  echo "$(uniq -d "$2" | wc -l) contacts twice, $(comm -23 "$1" <(uniq "$2") | wc -l) missing," \
    "$(comm -13 "$1" <(uniq "$2") | wc -l) unknown"
}

# names_of_begun WANTED FOUND: those of the wanted whose file has a name among the found.
names_of_begun() { awk -F-Card 'NR == FNR { begun[$1]; next } $1 in begun' "$2" "$1"; }
