# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
# shellcheck shell=bash
#
# Installs the modules of package-lock.json, unless those that are there are newer. Two that want
# them at once wait for each other.
(
  cd "$(dirname "${BASH_SOURCE[0]}")" || exit
  exec 9>.modules.lock
  flock 9
  if [ ! node_modules/.package-lock.json -nt package-lock.json ]; then
    npm ci --ignore-scripts --no-audit --no-fund --loglevel=error >&2
    touch node_modules/.package-lock.json
  fi
)
