#!/usr/bin/env bash
# Runs inside the virtual display of try-package.sh: the launcher from the desktop entry's
# command, the data folder typed, DEMO chosen, the module's lookup by name, two screenshots.
set -euo pipefail
data=$1 out=$2 command=$3
wait_window() {
  for _ in $(seq 1 100); do
    xdotool search --name "$1" 2>/dev/null | head -n 1 && return 0
    sleep 0.1
  done
  echo "No window \"$1\" appeared." >&2
  return 1
}
# The desktop entry's command, as the menu runs it (no field codes in it).
$command &
pid=$!
launcher=$(wait_window "A/P Master - Sign in")
sleep 0.8
xdotool windowfocus --sync "$launcher" 2>/dev/null || true
# The folder field has the focus: type the folder, Tab to read its staff list, Tab again to
# the list, Down from CLERK to DEMO.
xdotool type --window "$launcher" --delay 20 "$data"
xdotool key --window "$launcher" Tab
sleep 0.5
xdotool key --window "$launcher" Tab Down
sleep 0.4
import -window "$launcher" "$out/launcher.png"
xdotool key --window "$launcher" alt+s
module=$(wait_window "DEMO @ Vendors")
sleep 0.8
xdotool windowfocus --sync "$module" 2>/dev/null || true
# Lookup by name: from the entry back to the methods, one to the right, then the name.
xdotool key --window "$module" shift+Tab Right Tab
xdotool type --window "$module" --delay 40 "Acme"
xdotool key --window "$module" Return
sleep 0.8
import -window root "$out/launched-vendor.png"
xdotool key --window "$module" alt+x
wait "$pid"
