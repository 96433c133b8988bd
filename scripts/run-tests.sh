#!/usr/bin/env bash
# Runs the tests of a build folder on both engines: starts a throwaway PostgreSQL server in a
# folder of its own for the run and removes it afterwards, whatever the outcome.
set -euo pipefail
cd "$(dirname "$0")/.."
build=${1:-build}
timeout=${2:-300}
shift $(( $# < 2 ? $# : 2 ))   # the rest goes to ctest, e.g. -LE postgres-screens
server=$(mktemp -d "${TMPDIR:-/tmp}/apmaster-pg.XXXXXX")
trap 'bash scripts/pg-cluster.sh stop "$server"' EXIT
bash scripts/pg-cluster.sh start "$server"
export APMASTER_TEST_POSTGRES_HOST=$server
# This run requires the server: a server test that finds none fails instead of being skipped.
export APMASTER_TEST_REQUIRE_SERVER=1
ctest --test-dir "$build" -j2 --output-on-failure --timeout "$timeout" "$@"
