#!/usr/bin/env bash
# Sets everything up, builds, creates the demo company in ./demo and starts A/P Master on it as
# the level-99 user DEMO. Without a display it runs the module under a virtual display instead
# and prints the path of a screenshot of the vendor screen.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
bash scripts/build.sh build
demo=$PWD/demo
if [ ! -f "$demo/ap.mdb" ]; then
  build/tools/demo/apmaster-demo "$demo"
fi
# The report runner and its report definitions (also for a demo folder made before they existed).
ln -sfn "$PWD/build/tools/cryprint/cryprint" "$demo/cryprint.exe"
cp -n tools/cryprint/definitions/*.rpt "$demo"/
ln -sfn "$PWD/build/tools/chanum/chanum" "$demo/chanum.exe"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ] && [ -z "${CI:-}" ]; then
  cd "$demo"
  exec ../build/src/apmaster VDR99DEMO
fi
echo "No display is available, so A/P Master runs under a virtual display and a screenshot is saved."
bash scripts/screenshot.sh "$demo" "$demo/vendor-screen.png" vendor
