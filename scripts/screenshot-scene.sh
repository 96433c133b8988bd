#!/usr/bin/env bash
# Runs inside the virtual display of screenshot.sh: starts the module, drives it to the scene,
# saves the screenshot and closes the module through its Exit button.
set -euo pipefail
data=$1 out=$2 scene=$3 name=$4 program=$5
cd "$data"
QT_QPA_PLATFORM=xcb "$program" VDR99DEMO &
pid=$!
win=""
for _ in $(seq 1 100); do
  win=$(xdotool search --name "DEMO @ Vendors" 2>/dev/null | head -n 1 || true)
  [ -n "$win" ] && break
  sleep 0.1
done
if [ -z "$win" ]; then
  echo "A/P Master did not open its window." >&2
  kill "$pid" 2>/dev/null || true
  exit 1
fi
sleep 0.8
xdotool windowfocus --sync "$win" 2>/dev/null || true
if [ "$scene" != lookup ]; then
  # Lookup by name: from the entry back to the methods, one to the right, then the name.
  xdotool key --window "$win" shift+Tab Right Tab
  xdotool type --window "$win" --delay 40 "$name"
  xdotool key --window "$win" Return
  sleep 0.6
fi
if [ "$scene" = notes ]; then
  xdotool key --window "$win" alt+o   # notes
  sleep 0.6
fi
if [ "$scene" = split ]; then
  xdotool key --window "$win" alt+i   # unpaid invoices
  sleep 0.6
  xdotool key --window "$win" alt+v   # paid invoices
  sleep 0.6
  # Double-click the first invoice: its split detail opens.
  eval "$(xdotool getwindowgeometry --shell "$win")"
  xdotool mousemove $((X + 200)) $((Y + ${SPLIT_ROW_Y:-374})) click --repeat 2 --delay 80 1
  sleep 0.6
fi
shot=root
if [ "$scene" = userfields ] || [ "$scene" = userfields-front ]; then
  xdotool key --window "$win" alt+u   # user fields of the vendor shown
  sleep 1.0
  udf=$(xdotool search --name "User Defined Information" 2>/dev/null | head -n 1 || true)
  # The user fields window alone (the virtual display has no window manager to frame it), or
  # the whole screen with it in front of the vendor screen.
  [ -n "$udf" ] && [ "$scene" = userfields ] && shot=$udf
fi
import -window "$shot" "$out"
if [ "$scene" = userfields ] || [ "$scene" = userfields-front ]; then
  if [ -n "$udf" ]; then
    xdotool key --window "$udf" alt+x  # the user fields' Exit
    sleep 0.5
  fi
  xdotool windowfocus --sync "$win" 2>/dev/null || true
fi
xdotool key --window "$win" alt+x
wait "$pid"
