#!/usr/bin/env bash
# Starts A/P Master on a data folder under a virtual display, drives it from the keyboard to a
# scene and saves a screenshot of the screen as a PNG.
#   screenshot.sh DATA_FOLDER OUTPUT.png [lookup|vendor|notes|split|userfields|userfields-front]
#                 [VENDOR_NAME]
# SCREEN sets the virtual screen (default 1100x800x24); QT_SCALE_FACTOR is passed on.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
data=$(cd "$1" && pwd)
out=$(realpath -m "$2")
scene=${3:-lookup}
name=${4:-Acme}
program=${APMASTER_PROGRAM:-$here/build/src/apmaster}

xvfb-run -a -s "-screen 0 ${SCREEN:-1100x800x24}" \
  bash "$here/scripts/screenshot-scene.sh" "$data" "$out" "$scene" "$name" "$program"
echo "$out"
