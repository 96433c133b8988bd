#!/usr/bin/env bash
# Tries the installed package as a new user would: a fresh home folder, the demo company made
# by apmaster-demo, the launcher started with its desktop entry's command under a virtual
# display, sign-in as DEMO and a vendor found by name; then a report opened in the preview of
# the runner the demo company leads to (its cryprint.exe). Saves docs/launcher.png,
# docs/launched-vendor.png and docs/package-report.png (or into the folder given).
#   sudo apt install ./build/apmaster_21.12_amd64.deb && bash scripts/try-package.sh [OUT_DIR]
# With SCALE (the QT_SCALE_FACTOR, e.g. 1.5) the whole walk runs at that scaling on the
# virtual screen SCREEN (default 1366x768) and goes on as try-package-scene.sh describes, each
# step checked; the pictures are named tried-<percent>-*.png. It exits non-zero when a check
# fails.
#   SCALE=1.5 SCREEN=1366x768 bash scripts/try-package.sh [OUT_DIR]
# With WALK=suite it walks the suite's programs the module starts instead (try-suite-scene.sh:
# merging two vendors, the printer set-up, the version window ...); pictures suite-*.png.
#   WALK=suite bash scripts/try-package.sh [OUT_DIR]
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
out=$(realpath -m "${1:-$here/docs}")
entry=/usr/share/applications/com.velmora.apmaster.desktop
[ -f "$entry" ] || { echo "The package is not installed ($entry is missing)." >&2; exit 1; }
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
mkdir -m 700 "$home/run"
export HOME=$home XDG_CONFIG_HOME=$home/.config XDG_RUNTIME_DIR=$home/run
apmaster-demo "$home/velmora-demo" >/dev/null
# The new company's reports work with nothing copied by hand.
[ -x "$home/velmora-demo/cryprint.exe" ] ||
  { echo "The demo company has no cryprint.exe." >&2; exit 1; }
[ "$(readlink -f "$home/velmora-demo/cryprint.exe")" = "$(command -v cryprint)" ] ||
  { echo "cryprint.exe of the demo company is not the installed runner." >&2; exit 1; }
command=$(sed -n 's/^Exec=//p' "$entry")
mkdir -p "$out"
if [ "${WALK:-}" = suite ]; then
  export QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1
  [ -z "${SCALE:-}" ] || export QT_SCALE_FACTOR=$SCALE
  xvfb-run -a -s "-screen 0 ${SCREEN:-1366x768}x24" dbus-run-session -- \
    bash "$here/scripts/try-suite-scene.sh" "$home/velmora-demo" "$out" "$command" "suite-"
  ls "$out"/suite-*.png
  exit 0
fi
if [ -n "${SCALE:-}" ]; then
  # The module and the runner at that scaling, readable over an accessibility bus of their own.
  percent=$(awk -v s="$SCALE" 'BEGIN { printf "%d", s * 100 + 0.5 }')
  export QT_SCALE_FACTOR=$SCALE QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 WALK=full
  xvfb-run -a -s "-screen 0 ${SCREEN:-1366x768}x24" dbus-run-session -- \
    bash "$here/scripts/try-package-scene.sh" "$home/velmora-demo" "$out" "$command" \
    "tried-$percent-"
  ls "$out"/tried-"$percent"-*.png
  exit 0
fi
xvfb-run -a -s "-screen 0 1100x800x24" \
  bash "$here/scripts/try-package-scene.sh" "$home/velmora-demo" "$out" "$command"
# The report runner as the module starts it: cryprint.exe of the data folder, which leads to
# the installed runner, on the shipped vendor list.
CRYPRINT_PROGRAM="$home/velmora-demo/cryprint.exe" \
  bash "$here/scripts/preview-screenshot.sh" "$home/velmora-demo" "$out/package-report.png" >/dev/null
echo "$out/launcher.png $out/launched-vendor.png $out/package-report.png"
