#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# Runs each line "$ COMMAND" of a page's console blocks, one behind the other in a new folder with
# samples/, and compares what is printed with what the page shows. With --write the page gets what
# is printed. Usage: console.sh PIMVOBJ ROOT PAGE [--write]
set -u
program=$(realpath "$1") samples=$2/samples page=$(realpath "$3") write=${4:-}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/here" && cp -r "$samples" "$work/here/samples" && cd "$work/here" || exit 1
export PATH=${program%/*}:$PATH HOME=$work/home TZ=Europe/Berlin LC_ALL=C.UTF-8
unset XDG_DATA_HOME PIMVOBJ_STORE
status=0

# What a command prints, in lines as a page has them; it can't know when they were made.
printed() {
  (exit "$status")
  eval "$1" >../out 2>&1 </dev/null
  status=$?
  local now='[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2} [+-][0-9]{2}:[0-9]{2}'
  [[ $1 != *history* && $1 != *'original list'* ]] || sed -Ei "s/$now/2026-03-01 10:00 +01:00/" ../out
  sed 's/\r$//; $a\' ../out
}

block=''
while IFS= read -r line; do
  [[ $block && $line != '$ '* && $line != '```' ]] && continue
  printf '%s\n' "$line"
  case $line in
    '```console') block=1 ;;
    '```') block='' ;;
    '$ '*) [[ ! $block ]] || printed "${line#\$ }" ;;
  esac
done <"$page" >../made

if [ "$write" = --write ]; then
  cat ../made >"$page"
else
  diff -u "$page" ../made
fi
