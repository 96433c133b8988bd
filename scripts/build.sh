#!/usr/bin/env bash
# Configures and builds the project into the given folder (default: build).
# Extra arguments go to CMake's configure step.
set -euo pipefail
cd "$(dirname "$0")/.."
dir=${1:-build}
shift || true
cmake -S . -B "$dir" -DCMAKE_BUILD_TYPE=${BUILD_TYPE:-RelWithDebInfo} "$@" >/dev/null
cmake --build "$dir" -j2
