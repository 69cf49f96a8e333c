#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Looks at the packages that scripts/package.sh has made as a distribution would: lintian; installed
# into a new Debian, used there, removed without leftovers; made again from a copy of the sources in
# another folder, byte for byte the same.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
cd "$root"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
debs=(build/package/*.deb)
[ ${#debs[@]} -eq 4 ] || { echo "there aren't four packages: ${debs[*]}"; exit 1; }
depends() { for deb in "$@"; do dpkg-deb --field "$deb" Depends; done; }
# Only who uses the store in a server gets libpq.
core=$(depends build/package/libpimvobjmgr[0-9]*.deb) postgres=$(depends build/package/libpimpgstore[0-9]*.deb)
[[ $core != *libpq* && $postgres == *libpimvobjmgr*'(= '*libpq5* ]] || { echo "needs: $core; $postgres"; exit 1; }

echo "packages: lintian"
lintian --allow-root --fail-on error,warning "${debs[@]}"

echo "packages: a new Debian"
# Runs in the new Debian: what people do with the packages, and what is left of them behind that.
cat >"$work/try.sh" <<'INSIDE'
set -euo pipefail
export DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 HOME=/packages
list() { find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /var/cache -o -path /var/log \
  -o -path /var/lib/dpkg -o -path /var/lib/apt -o -path /tmp -o -path /packages \
  -o -name ld.so.cache \) -prune -o -print | sort; }
list >/tmp/before
dpkg --install /packages/*.deb
pimvobj --version | grep -q '^pimvobj [0-9]'
pimvobj contacts import /packages/friends.vcf 2>&1 | grep -q '^3 contacts imported'
[ "$(pimvobj contacts count)" = 3 ]
test -s /usr/share/man/man1/pimvobj.1.gz
test -s /usr/share/bash-completion/completions/pimvobj
ldconfig -p | grep -q libpimstore
ldconfig -p | grep -q libpimpgstore
g++ -std=c++20 /packages/StoreHost.cpp -o /tmp/host $(pkg-config --cflags --libs pimstore)
/tmp/host /tmp/host.db /packages/friends.vcf
g++ -std=c++20 /packages/PostgresHost.cpp -o /tmp/host $(pkg-config --cflags --libs pimpgstore)
/tmp/host
dpkg --purge $(for deb in /packages/*.deb; do dpkg-deb --field "$deb" Package; done)
list >/tmp/after
diff /tmp/before /tmp/after
INSIDE
mkdir "$work/packages"
cp "${debs[@]}" "$work/try.sh" samples/friends.vcf tests/install/{Store,Postgres}Host.cpp "$work/packages"
others=$(depends "${debs[@]}" | tr ',' '\n' | sed 's/(.*//; s/ //g' | grep -vE '^(lib)?pim' | sort -u | tr '\n' ',')
# The same sources of packages as this machine's.
cat /etc/apt/sources.list /etc/apt/sources.list.d/debian.sources 2>/dev/null >"$work/sources" || true
# Documents aren't left out, as they are in small images.
mmdebstrap --quiet --variant=minbase --include="g++,pkg-config,$others" \
  --customize-hook="copy-in $work/packages /" --customize-hook='chroot "$1" bash /packages/try.sh' \
  bookworm /dev/null - <"$work/sources" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }

echo "packages: the same bytes from another folder"
mkdir -p "$work/another/place"
git ls-files -z | xargs -0 cp --parents -P -t "$work/another/place"
"$work/another/place/scripts/package.sh" >"$work/log" 2>&1 || { cat "$work/log"; exit 1; }
for deb in "${debs[@]}"; do
  cmp "$deb" "$work/another/place/$deb" || { echo "$deb isn't the same"; exit 1; }
done
