#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Looks at albums' scripts: run.sh lint. Or opens albums in Chromium: run.sh PIMVOBJ [NAME...], where
# names are those of tests.
set -euo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
source "$here/modules.sh"

if [ "$1" = lint ]; then
  cd "$here/../.."
  exec "$here/node_modules/.bin/eslint" --no-error-on-unmatched-pattern --max-warnings 0 \
    --config tests/album/eslint.config.mjs 'app/album/*.js' 'tests/album/*.mjs' 'bench/album/*.mjs'
fi
PIMVOBJ=$(realpath "$1")
export PIMVOBJ
cd "$here"
exec node --test "${@:2}" all.test.mjs
