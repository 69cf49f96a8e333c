#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Makes the pictures of albums in docs/images anew, from the samples: album-pictures.sh [PIMVOBJ].
# The tests compare with them.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
pimvobj=${1:-build/dev/app/pimvobj}
[ -x "$pimvobj" ] || {
  echo "no $pimvobj; build it, or name another one" >&2
  exit 2
}
mkdir -p docs/images
ALBUM_PICTURES=new tests/album/run.sh "$pimvobj" --test-name-pattern='look as they did'
