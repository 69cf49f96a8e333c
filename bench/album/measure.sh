#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# How long an album of 20,000 contacts with 2,000 pictures takes to be written, to open in Chromium
# and to answer keys: measure.sh [PIMVOBJ]. It should be 3 s, 2 s and 100 ms on two cores.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
pimvobj=$(realpath "${1:-$here/../../build/release/app/pimvobj}")
contacts=${ALBUM_CONTACTS:-20000}
pictures=${ALBUM_PICTURES:-2000}
source "$here/../../tests/album/modules.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
node "$here/make.mjs" "$contacts" "$pictures" >"$work/contacts.vcf"
"$pimvobj" --store "$work/album.db" --quiet contacts import "$work/contacts.vcf"
# The slowest of three; the first one also warms up what the system keeps of the store.
TIMEFORMAT='%R'
for _ in 1 2 3; do
  { time "$pimvobj" --store "$work/album.db" --quiet contacts album --force "$work/album.html" >/dev/null; } 2>&1
done | sort -n | tail -1 | sed 's/.*/written in & s/'
du -m "$work/album.html" | sed 's/\t.*/ MB/'
for _ in 1 2 3; do node "$here/measure.mjs" "$work/album.html"; done
