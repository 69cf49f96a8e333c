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
  -DPIMVOBJ_BUILD_BOTH=ON -DPIMVOBJ_PACKAGES=ON \
  -DPIMVOBJ_PACKAGE_DATE="$(date --utc --date "@$SOURCE_DATE_EPOCH" --rfc-email)"
cmake --build "$build"
rm -f "$build"/*.deb
(cd "$build" && cpack)

# cpack calls ldconfig by scripts beside the trigger, and leaves the files' times to chance.
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for deb in "$build"/*.deb; do
  dpkg-deb --raw-extract "$deb" "$work/files"
  rm -f "$work"/files/DEBIAN/post{inst,rm}
  dpkg-deb --root-owner-group --build "$work/files" "$deb" >"$work/log"
  rm -r "$work/files"
done
ls "$build"/*.deb
