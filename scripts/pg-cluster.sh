#!/usr/bin/env bash
# A throwaway PostgreSQL server for the tests and benchmarks, in a folder of its own:
#   scripts/pg-cluster.sh start DIR   makes DIR, starts a server listening only on a Unix socket
#                                      in DIR (no network port), with fsync off
#   scripts/pg-cluster.sh start DIR durable
#                                      the same, but commits reach the disk as on a real server
#                                      (fsync on), for benchmarks
#   scripts/pg-cluster.sh stop DIR    stops the server and removes DIR
# The server's superuser is "postgres" (trust on the socket). initdb refuses to run as root, so
# as root the server runs as the postgres user.
set -euo pipefail
action=${1:?start or stop}
dir=${2:?the server folder}
durability="-c fsync=off -c synchronous_commit=off -c full_page_writes=off"
[ "${3:-}" != durable ] || durability=""
bin=$(ls -d /usr/lib/postgresql/*/bin 2>/dev/null | sort -V | tail -1)
[ -n "$bin" ] || { echo "PostgreSQL is not installed (scripts/setup.sh installs it)." >&2; exit 1; }
as=()
if [ "$(id -u)" -eq 0 ]; then as=(runuser -u postgres --); fi
case $action in
start)
  mkdir -p "$dir"
  [ "$(id -u)" -ne 0 ] || chown postgres "$dir"
  "${as[@]}" "$bin/initdb" -D "$dir/data" -A trust -U postgres --locale=C -E UTF8 \
    >"$dir/initdb.log" 2>&1 || { cat "$dir/initdb.log" >&2; exit 1; }
  # The superuser comes in without a password; everyone else needs theirs.
  printf 'local all postgres trust\nlocal all all scram-sha-256\n' >"$dir/data/pg_hba.conf"
  "${as[@]}" "$bin/pg_ctl" -D "$dir/data" -l "$dir/server.log" -w -s \
    -o "-c listen_addresses='' -c unix_socket_directories='$dir' $durability \
        -c max_connections=400" start \
    || { cat "$dir/server.log" >&2; exit 1; }
  # Every database made for a test is a copy of template1: the case-blind text type is there.
  "${as[@]}" "$bin/psql" -h "$dir" -U postgres -d template1 -qc \
    "create extension if not exists citext schema public"
  ;;
stop)
  if [ -d "$dir/data" ]; then
    "${as[@]}" "$bin/pg_ctl" -D "$dir/data" -m immediate -s stop || true
  fi
  rm -rf "$dir"
  ;;
*)
  echo "usage: $0 start|stop DIR" >&2
  exit 2
  ;;
esac
