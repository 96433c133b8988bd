#!/usr/bin/env bash
# Sets everything up, builds and runs all tests: each on the SQLite files and again on a
# throwaway PostgreSQL server (started here, removed at the end, also on failure).
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh build
bash scripts/run-tests.sh build
