#!/bin/sh
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
# Other programs read the cards that convert writes: each without a warning, and field by field what
# the records hold. Run: contacts.sh PIMVOBJ PROJECT [MADE-RECORDS]
set -eu
pimvobj=$1
project=$2
made=${3:-2000}
peers=$project/tests/peers
jars=/usr/share/java/ez-vcard.jar:/usr/share/java/vinnie.jar

python=
for candidate in python3 /usr/bin/python3; do
  if "$candidate" -c 'import vobject' 2>/dev/null; then python=$candidate; break; fi
done
if [ -z "$python" ] || ! command -v javac >/dev/null || [ ! -e /usr/share/java/vinnie.jar ]; then
  echo "needs python3-vobject, libez-vcard-java, libvinnie-java and a JDK"
  exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
javac -cp "$jars" -d "$work" "$peers/CardPeer.java"
$python "$peers/contacts.py" make "$made" >"$work/made.vcf"

failed=0
check() {
  if ! "$@" >"$work/problems"; then
    echo "$file as $form, read by $peer:"
    cat "$work/problems"
    failed=1
  fi
}
for file in "$project"/samples/*.vcf "$project"/tests/data/*.vcf "$work/made.vcf"; do
  "$pimvobj" inspect --json "$file" >"$work/records.json" 2>"$work/account"
  for form in vcard3 vcard4; do
    "$pimvobj" convert -q --force --to $form -o "$work/cards.vcf" "$file" >"$work/account" 2>&1
    peer=ez-vcard
    java -cp "$jars:$work" CardPeer "$work/cards.vcf" >"$work/read.json"
    check $python "$peers/contacts.py" compare $form "$work/records.json" "$work/read.json"
    peer=vobject
    $python "$peers/card_peer.py" "$work/cards.vcf" >"$work/read.json"
    check $python "$peers/contacts.py" compare $form "$work/records.json" "$work/read.json"
  done
done
exit $failed
