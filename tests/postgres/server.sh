#!/usr/bin/env bash
# SPDX-FileCopyrightText: 2026 The PimVobjMgr authors
# SPDX-License-Identifier: Apache-2.0
#
# PostgreSQL servers for tests. Each has a FOLDER of its own with its socket, `data` and `log`, and
# listens on the socket alone. Role `pim` owns database `pim`; `postgres` is the superuser. All of it
# goes away with the process that began it, even one that is killed.
#
# A test sources this and calls `servers_begin`; the functions below say what each does. By hand the
# same is done by `server.sh FUNCTION FOLDER...`, without `server_` in front, and lasts as long as the
# shell: `server.sh start /tmp/a`, `server.sh sql /tmp/a 'SELECT 1'`, `server.sh remove /tmp/a`.
set -euo pipefail
unset "${!PG@}"  # variables that would lead libpq elsewhere

servers_script=$(realpath "${BASH_SOURCE[0]}")
servers_bin=$(find /usr/lib/postgresql/*/bin -name initdb -printf '%h\n' 2>/dev/null | sort -V | tail -n 1)
servers_port=5432  # part of the socket's name alone

# Servers refuse root: Debian's user for them takes its place.
servers_user=$(id -un)
if [ "$(id -u)" -eq 0 ]; then
  servers_user=postgres
  id "$servers_user" >/dev/null 2>&1 || servers_user=nobody
fi

# as_server FOLDER COMMAND...: as the servers' user, in a folder that it may enter.
as_server() {
  local folder=$1 drop=()
  shift
  [ "$(id -u)" -ne 0 ] || drop=(setpriv --reuid "$servers_user" --regid "$(id -g "$servers_user")" --clear-groups)
  (cd "$folder" && HOME=$folder PATH=${servers_bin:+$servers_bin:}/usr/sbin:$PATH exec "${drop[@]}" "$@")
}

server_fail() {
  echo "server.sh: $*" >&2
  return 1
}

# When a process began, unless it has ended: numbers of processes come back, this doesn't.
process_began() {
  local fields
  { fields=$(<"/proc/$1/stat"); } 2>/dev/null || return 1
  read -ra fields <<<"${fields##*) }"
  [ "${fields[0]}" != Z ] && echo "${fields[19]}"
}

# servers_free FOLDER PROCESS: whether no living process has the folder, but for this one.
servers_free() {
  local owner
  owner=$(cat "$1/owner" 2>/dev/null) || return 0
  [ "${owner% *}" = "$2" ] || [ "$(process_began "${owner% *}")" != "${owner#* }" ] ||
    server_fail "$1 is in use by process ${owner% *}"
}

# servers_claim FOLDER PROCESS: makes the folder, and sees to it that it goes away with the process.
servers_claim() {
  local began
  began=$(process_began "$2") || server_fail "process $2 has ended" || return
  servers_free "$1" "$2" || return
  [ "$(cat "$1/owner" 2>/dev/null)" != "$2 $began" ] || return 0
  [ ! -e "$1/owner" ] || servers_remove "$1"
  mkdir "$1" 2>/dev/null || [ -O "$1" ] || server_fail "$1 is somebody else's" || return
  chmod 755 "$1"
  echo "$2 $began" >"$1/owner"
  # Out of the tree of processes, which ctest kills as a whole when the time is up.
  setsid --fork "$servers_script" guard "$1" "$2" "$began" </dev/null >/dev/null 2>&1
}

# Waits until either the owner of a folder or the folder itself is gone.
servers_guard() {
  while [ "$(cat "$1/owner" 2>/dev/null)" = "$2 $3" ]; do
    [ "$(process_began "$2")" = "$3" ] || servers_remove "$1"
    sleep 0.5
  done
}

# servers_begin: sets `work`, a new folder for the test and its servers, which goes away at its end.
servers_begin() {
  work=$(mktemp -d "${TMPDIR:-/tmp}/pim-servers-XXXXXX")
  trap 'servers_remove "$work"' EXIT
  servers_claim "$work" $$
}

# servers_remove FOLDER: ends all servers in it, and removes it.
servers_remove() {
  [ -d "$1" ] || return 0
  local tries folder
  server_signal "$1" QUIT
  for ((tries = 0; tries < 50; ++tries)); do
    [ -n "$(server_processes "$1")" ] || break
    sleep 0.1
  done
  for folder in "$1" "$1"/*/; do server_kill "$folder"; done
  # Whose it is stays to the end: what is left of an interrupted removal is still known.
  find "$1" -mindepth 1 -maxdepth 1 ! -name owner -exec rm -rf {} +
  rm -rf "$1"
}

# The processes of all servers in a folder, by where they work.
server_processes() {
  local folder
  folder=$(realpath "$1")
  # Processes end while it looks, and others' can't be looked at: neither matters.
  {
    as_server / find /proc/[0-9]*/cwd -maxdepth 0 \( -lname "$folder" -o -lname "$folder/*" \) -printf '%h\n' || true
  } 2>/dev/null | while read -r process; do
    case $(as_server / readlink "$process/exe" 2>/dev/null) in
      */postgres* | */pgbouncer*) echo "${process#/proc/}" ;;
    esac
  done
}

# server_signal FOLDER SIGNAL: to all processes of its servers at once.
server_signal() {
  local processes
  mapfile -t processes < <(server_processes "$1")
  [ ${#processes[@]} -eq 0 ] || kill "-$2" "${processes[@]}" 2>/dev/null || true
}

# server_kill FOLDER: as when the machine loses power, but for what the kernel still writes.
server_kill() {
  while [ -n "$(server_processes "$1")" ]; do server_signal "$1" KILL; done
  # What a server does away with at its end: the segment that tells others that it runs.
  local segment
  segment=$(sed -n '7s/.* //p' "$1/data/postmaster.pid" 2>/dev/null) || return 0
  [ -z "$segment" ] || as_server / ipcrm --shmem-id "$segment" 2>/dev/null || true
}

# server_set FOLDER [SETTING=VALUE]...: for the server's next start, and at once if it runs.
server_set() {
  local folder=$1 setting
  shift
  for setting in "$@"; do
    printf "%s = '%s'\n" "${setting%%=*}" "${setting#*=}" >>"$folder/data/postgresql.conf"
  done
  [ ! -e "$folder/data/postmaster.pid" ] || as_server "$folder" pg_ctl -D "$folder/data" -s reload
}

# Makes the folder of one server.
server_folder() {
  [ -n "$servers_bin" ] || server_fail "there is no PostgreSQL server; scripts/setup.sh all installs one" || return
  [ $((${#1} + ${#servers_port} + 10)) -le 107 ] || server_fail "$1 is too long a name for a socket's folder" || return
  mkdir -p "$1"
  chmod 755 "$1"
  [ "$(id -u)" -ne 0 ] || chown "$servers_user" "$1"
}

server_run() {
  as_server "$1" pg_ctl -D "$1/data" -l "$1/log" -w -t 60 -s start </dev/null >/dev/null 2>&1 && return
  server_log "$1" >&2
  server_fail "no server starts in $1"
}

# server_start FOLDER [SETTING=VALUE]...: makes the server if it isn't there yet. It survives no
# power cut, unless told fsync=on.
server_start() {
  local folder=$1 new=
  shift
  if [ ! -e "$folder/data" ]; then
    new=yes
    server_folder "$folder"
    as_server "$folder" initdb -D "$folder/data" -U postgres --auth=trust --encoding=UTF8 --locale=C.UTF-8 \
      --no-sync >"$folder/initdb.log" 2>&1 || { cat "$folder/initdb.log" >&2; return 1; }
    server_set "$folder" listen_addresses= port=$servers_port "unix_socket_directories=$folder" \
      fsync=off full_page_writes=off deadlock_timeout=200ms wal_retrieve_retry_interval=200ms \
      dynamic_shared_memory_type=mmap timezone=UTC log_timezone=UTC 'log_line_prefix=%m [%p] %u '
  fi
  server_set "$folder" "$@"
  server_run "$folder"
  [ -z "$new" ] || psql -X -q -h "$folder" -U postgres -d postgres -v ON_ERROR_STOP=1 \
    -c 'CREATE ROLE pim LOGIN CREATEDB' -c 'CREATE DATABASE pim OWNER pim'
}

# server_stop FOLDER: in order, without waiting for clients; its data stay.
server_stop() {
  as_server "$1" pg_ctl -D "$1/data" -m fast -w -s stop
}

# server_remove FOLDER
server_remove() {
  servers_remove "$1"
}

# server_password FOLDER PASSWORD: which `pim` needs from now on; `postgres` needs none.
server_password() {
  printf '%s\n' 'local all,replication postgres trust' 'local all all scram-sha-256' >"$1/data/pg_hba.conf"
  psql -X -q -h "$1" -U postgres -d postgres <<<"ALTER ROLE pim PASSWORD '$2'; SELECT pg_reload_conf() \g /dev/null"
}

# server_standby FOLDER PRIMARY [SETTING=VALUE]...: makes and starts a standby that can be read, and
# without which no commit on the primary ends.
server_standby() {
  local folder=$1 primary=$2
  shift 2
  server_folder "$folder"
  as_server "$folder" pg_basebackup -D "$folder/data" -h "$primary" -U postgres -R -X stream -c fast --no-sync \
    >"$folder/log" 2>&1 || { server_log "$folder" >&2; return 1; }
  chown --reference="$folder" "$folder/log"
  server_set "$folder" "unix_socket_directories=$folder" synchronous_standby_names= "$@"
  server_run "$folder"
  server_set "$primary" 'synchronous_standby_names=*'
  server_until "$primary" "SELECT count(*) = 1 FROM pg_stat_replication WHERE sync_state = 'sync'"
}

# server_promote FOLDER: makes a standby a primary.
server_promote() {
  as_server "$1" pg_ctl -D "$1/data" -w -s promote
}

# server_bouncer FOLDER SERVER session|transaction [SETTING=VALUE]...: a PgBouncer in front of a server.
server_bouncer() {
  local folder=$1 server=$2 mode=$3
  shift 3
  server_folder "$folder"
  printf '"%s" ""\n' pim postgres >"$folder/users"
  printf '%s\n' '[databases]' "* = host=$server port=$servers_port" '[pgbouncer]' 'listen_addr =' \
    "listen_port = $servers_port" "unix_socket_dir = $folder" 'auth_type = trust' "auth_file = $folder/users" \
    "pool_mode = $mode" "logfile = $folder/log" "pidfile = $folder/pid" "${@/=/ = }" >"$folder/pgbouncer.ini"
  as_server "$folder" pgbouncer -d "$folder/pgbouncer.ini" >"$folder/start.log" 2>&1 ||
    { cat "$folder/start.log" >&2; return 1; }
  server_wait "$folder"
}

# server_sql FOLDER STATEMENT [OPTION...]: as the superuser; prints rows alone.
server_sql() {
  psql -X -q -A -t -v ON_ERROR_STOP=1 -h "$1" -U postgres -d pim -c "$2" "${@:3}"
}

# server_until FOLDER CONDITION [SECONDS=30]: waits until an SQL condition holds.
server_until() {
  local tries
  for ((tries = 0; tries < ${3:-30} * 10; ++tries)); do
    [ "$(server_sql "$1" "$2" 2>/dev/null)" != t ] || return 0
    sleep 0.1
  done
  server_log "$1" >&2
  server_fail "$1: this never held: $2"
}

# server_wait FOLDER [SECONDS=30]: until the server can be reached.
server_wait() {
  server_until "$1" 'SELECT true' "${2:-30}"
}

# server_log FOLDER
server_log() {
  echo "--- the end of $1/log:"
  tail -n 60 "$1/log" || true
}

# server_url FOLDER [NAME=VALUE...]
server_url() {
  local url="postgresql:///pim?host=$1&user=pim" option
  for option in "${@:2}"; do url+="&$option"; done
  echo "$url"
}

[ "${BASH_SOURCE[0]}" = "$0" ] || return 0
case ${1:-} in
  start | standby | bouncer)
    servers_claim "$(realpath -m "$2")" "$PPID"
    "server_$1" "$(realpath "$2")" "${@:3}"
    ;;
  remove)
    # Nothing but what it made; and not what another run of tests has.
    [ ! -e "$2/owner" ] || { servers_free "$(realpath "$2")" "$PPID" && servers_remove "$(realpath "$2")"; }
    ;;
  stop | kill | promote | password | set | sql | until | wait | log | url)
    "server_$1" "$(realpath -m "$2")" "${@:3}"
    ;;
  guard) servers_guard "${@:2}" ;;
  *)
    sed -n '/^# A test sources/,/^[^#]/{/^#/p}' "$servers_script" >&2
    exit 2
    ;;
esac
