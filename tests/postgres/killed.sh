#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# A test that is killed leaves no server behind, and no folder.
set -euo pipefail
. "$(dirname "$0")/server.sh"
servers_begin

# Its servers are in the folder of this test, so that they go away whatever happens.
TMPDIR=$work bash -c '
  . "$1"
  servers_begin
  server_start "$work/primary"
  server_bouncer "$work/bouncer" "$work/primary" session
  kill -KILL $$' - "$servers_script" && exit 1
left=("$work"/pim-servers-*)
[ -d "${left[0]}/primary/data" ] || { echo "the killed test had no server"; exit 1; }
for ((tries = 0; tries < 100; ++tries)); do
  [ -e "${left[0]}" ] || [ -n "$(server_processes "$work")" ] || exit 0
  sleep 0.1
done
echo "a server outlives the test that began it"
exit 1
