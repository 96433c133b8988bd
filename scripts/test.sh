#!/usr/bin/env bash
# Sets everything up, builds and runs all tests.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh build
ctest --test-dir build -j2 --output-on-failure --timeout 300
