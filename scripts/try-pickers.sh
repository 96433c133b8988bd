#!/usr/bin/env bash
# Tries the pickers as a user would, under a virtual display, with real key presses: starts the
# module on a data folder, presses F5 in the lookup's entry, types part of a city into the vendor
# picker and picks the first vendor with Enter; then Modify, a click into the G/L account field,
# F5, part of an account's name typed into the account picker and Enter; then Cancel and Exit.
# Saves a screenshot at each step: picker-over-module.png, picker-vendor-shown.png,
# picker-accounts-over-module.png, picker-account-taken.png.
#   try-pickers.sh DATA_FOLDER OUTPUT_FOLDER [CITY_TYPED [ACCOUNT_TYPED]]
# APMASTER_PROGRAM names the module (default: the build's). SCREEN sets the virtual screen.
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
data=$(cd "$1" && pwd)
out=$(realpath -m "$2")
typed=${3:-edmon}
account=${4:-supp}
program=${APMASTER_PROGRAM:-$here/build/src/apmaster}
if [ "${INSIDE_XVFB:-}" != 1 ]; then
  INSIDE_XVFB=1 exec xvfb-run -a -s "-screen 0 ${SCREEN:-1100x800x24}" "$0" "$@"
fi
mkdir -p "$out"
cd "$data"
QT_QPA_PLATFORM=xcb "$program" VDR99DEMO &
pid=$!
waitfor() {
  local found=""
  for _ in $(seq 1 100); do
    found=$(xdotool search --name "$1" 2>/dev/null | head -n 1 || true)
    [ -n "$found" ] && break
    sleep 0.1
  done
  echo "$found"
}
win=$(waitfor "DEMO @ Vendors")
[ -n "$win" ] || { kill "$pid"; echo "A/P Master did not open its window." >&2; exit 1; }
sleep 0.8
xdotool windowfocus --sync "$win" 2>/dev/null || true
xdotool key --window "$win" F5
picker=$(waitfor "^Find a vendor")
[ -n "$picker" ] || { kill "$pid"; echo "F5 did not open the vendor picker." >&2; exit 1; }
sleep 0.5
xdotool windowfocus --sync "$picker" 2>/dev/null || true
xdotool type --window "$picker" --delay 60 "$typed"
sleep 0.5
import -window root "$out/picker-over-module.png"
gone() {
  for _ in $(seq 1 100); do
    xdotool search --name "$1" >/dev/null 2>&1 || return 0
    sleep 0.1
  done
}
# As typed on the keyboard, to the window with the focus.
xdotool windowfocus --sync "$picker" 2>/dev/null || true
xdotool key Return
gone "^Find a vendor"
sleep 0.8
import -window root "$out/picker-vendor-shown.png"
xdotool windowfocus --sync "$win" 2>/dev/null || true
xdotool key --window "$win" alt+m
sleep 0.5
# The G/L account field: right of "G/L Acct" in the middle column.
xdotool mousemove --window "$win" ${GL_FIELD_X:-560} ${GL_FIELD_Y:-196} click 1
sleep 0.3
xdotool key --window "$win" F5
picker=$(waitfor "^Find a G/L account")
[ -n "$picker" ] || { kill "$pid"; echo "F5 did not open the account picker." >&2; exit 1; }
sleep 0.5
xdotool windowfocus --sync "$picker" 2>/dev/null || true
xdotool type --window "$picker" --delay 60 "$account"
sleep 0.5
import -window root "$out/picker-accounts-over-module.png"
# As typed on the keyboard, to the window with the focus.
xdotool windowfocus --sync "$picker" 2>/dev/null || true
xdotool key Return
gone "^Find a G/L account"
sleep 0.8
import -window root "$out/picker-account-taken.png"
xdotool windowfocus --sync "$win" 2>/dev/null || true
xdotool key --window "$win" alt+c
sleep 0.5
xdotool key --window "$win" alt+x
wait "$pid" || true
ls "$out"/picker-*.png
