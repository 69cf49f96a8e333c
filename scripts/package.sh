#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Makes Debian packages of the program and the libraries, in build/package/*.deb: with the flags of
# Debian's own packages, and the same bytes whatever the folder and the time. DEBFULLNAME and
# DEBEMAIL name who makes them, as for Debian's own tools.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build/package

"$root/scripts/setup.sh" package
cd "$root"
# The day of the release, which CHANGELOG.md has.
day=$(sed -n 's/^## \[[0-9.]*\] - \([0-9-]*\)$/\1/p' CHANGELOG.md | head -n 1)
SOURCE_DATE_EPOCH=$(date --utc --date "$day" +%s)
export SOURCE_DATE_EPOCH
flags() { DEB_BUILD_MAINT_OPTIONS=hardening=+all dpkg-buildflags --get "$1" | sed 's/-g //'; }
cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER=g++ \
  -DCMAKE_CXX_FLAGS="$(flags CPPFLAGS) $(flags CXXFLAGS)" \
  -DCMAKE_EXE_LINKER_FLAGS="$(flags LDFLAGS)" -DCMAKE_SHARED_LINKER_FLAGS="$(flags LDFLAGS)" \
  -DCMAKE_INSTALL_PREFIX=/usr -DCMAKE_INSTALL_LIBDIR="lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)" \
  -DCMAKE_INSTALL_DOCDIR=share/doc/libpimvobjmgr-dev \
  -DPIMVOBJ_PACKAGER="${DEBFULLNAME:-PimVobjMgr maintainers} <${DEBEMAIL:-maintainers@localhost}>" \
  -DCMAKE_UNITY_BUILD=ON -DPIMVOBJ_BUILD_BOTH=ON -DPIMVOBJ_BUILD_POSTGRES=ON -DPIMVOBJ_PACKAGES=ON \
  -DPIMVOBJ_PACKAGE_DATE="$(date --utc --date "@$SOURCE_DATE_EPOCH" --rfc-email)"
cmake --build "$build"
rm -f "$build"/*.deb
(cd "$build" && cpack)

# What cpack can't: Debian has manual pages and the changelog compressed, zsh's completions in a place of its own, and
# ldconfig called by the trigger alone. Files get the time of the release.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for deb in "$build"/*.deb; do
  files=$work/$(basename "$deb")
  dpkg-deb --raw-extract "$deb" "$files"
  rm -f "$files"/DEBIAN/post{inst,rm}
  find "$files/usr/share/doc" -name CHANGELOG.md -execdir mv {} changelog \;
  find "$files/usr/share" \( -path '*/man/*.1' -o -path '*/doc/*/changelog' \) -exec gzip -9n {} +
  [ ! -e "$files/usr/share/zsh/site-functions" ] ||
    mv "$files/usr/share/zsh/site-functions" "$files/usr/share/zsh/vendor-completions"
  (cd "$files" && find usr -type f -print0 | LC_ALL=C sort -z | xargs -0 md5sum >DEBIAN/md5sums)
  dpkg-deb --root-owner-group --build "$files" "$deb" >"$work/log"
done
ls "$build"/*.deb
