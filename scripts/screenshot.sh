#!/usr/bin/env bash
# Starts A/P Master on a data folder under a virtual display, drives it from the keyboard to a
# scene and saves a screenshot of the screen as a PNG.
#   screenshot.sh DATA_FOLDER OUTPUT.png [lookup|vendor|split] [VENDOR_NAME]
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
data=$(cd "$1" && pwd)
out=$(realpath -m "$2")
scene=${3:-lookup}
name=${4:-Acme}
program=${APMASTER_PROGRAM:-$here/build/src/apmaster}

run_scene() {
  cd "$data"
  QT_QPA_PLATFORM=xcb "$program" VDR99DEMO &
  local pid=$!
  local win=""
  for _ in $(seq 1 100); do
    win=$(xdotool search --name "DEMO @ Vendors" 2>/dev/null | head -n 1 || true)
    [ -n "$win" ] && break
    sleep 0.1
  done
  if [ -z "$win" ]; then
    echo "A/P Master did not open its window." >&2
    kill "$pid" 2>/dev/null || true
    return 1
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
  if [ "$scene" = split ]; then
    xdotool key --window "$win" alt+i   # unpaid invoices
    sleep 0.6
    xdotool key --window "$win" alt+v   # paid invoices
    sleep 0.6
    xdotool key --window "$win" alt+w   # split detail of the selected invoice
    sleep 0.6
  fi
  import -window root "$out"
  xdotool key --window "$win" alt+x
  wait "$pid"
}

export -f run_scene
export data out scene name program here
xvfb-run -a -s "-screen 0 1100x800x24" bash -c run_scene
echo "$out"
