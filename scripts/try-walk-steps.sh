#!/usr/bin/env bash
# The steps the walks through the installed package share (sourced by try-package-scene.sh and
# try-suite-scene.sh, which set $here, $failures and, at the end, $module and $pid): windows
# waited for by title, keys typed, checks counted, what a window shows read over the
# accessibility bus.
wait_window() {
  for _ in $(seq 1 100); do
    xdotool search --name "$1" 2>/dev/null | head -n 1 && return 0
    sleep 0.1
  done
  echo "No window \"$1\" appeared." >&2
  return 1
}
# A check: its name, the value expected and the value shown.
check() {
  if [ "$2" = "$3" ]; then
    echo "ok: $1"
  else
    echo "FAILED: $1: expected \"$2\", shown \"$3\"" >&2
    failures=$((failures + 1))
  fi
}
# The text of a field of a window, read over the accessibility bus.
shown() { /usr/bin/python3 "$here/try-package-read.py" text "$1" "$2" || echo "(unreadable)"; }
# A check of a field: its name, the window, the field and the text expected, waited for up to
# ten seconds (the module answers keys and the bus in its own time).
check_field() {
  local text
  for _ in $(seq 1 20); do
    text=$(shown "$2" "$3")
    [ "$text" = "$4" ] && break
    sleep 0.5
  done
  check "$1" "$4" "$text"
}
# "yes" when the window lies wholly on the screen.
on_screen() {
  local X Y WIDTH HEIGHT SCREEN
  eval "$(xdotool getwindowgeometry --shell "$1")"
  read -r sw sh < <(xdotool getdisplaygeometry)
  if [ "$X" -ge 0 ] && [ "$Y" -ge 0 ] && [ $((X + WIDTH)) -le "$sw" ] &&
    [ $((Y + HEIGHT)) -le "$sh" ]; then echo yes; else echo "no: ${WIDTH}x${HEIGHT} at $X,$Y"; fi
}
# "yes" when the first window is stacked above the second (no window manager: the root's
# children as xwininfo lists them, top first).
above() {
  local first second
  first=$(printf '0x%x' "$1") second=$(printf '0x%x' "$2")
  xwininfo -root -children | awk -v a="$first" -v b="$second" '
    $1 == a { pa = NR } $1 == b { pb = NR }
    END { print (pa && pb && pa < pb) ? "yes" : "no" }'
}
note_of() { sqlite3 "file:$data/ap.mdb?mode=ro" "select coalesce(notes, '') from vendnotes where vendnumber = $1"; }
# Keys as typed: the window gets the input focus first (there is no window manager to give
# it), then the keys go through the keyboard.
press() {
  xdotool windowfocus --sync "$1" 2>/dev/null || true
  shift
  xdotool key --delay 80 "$@"
}
type_in() {
  xdotool windowfocus --sync "$1" 2>/dev/null || true
  xdotool type --delay 40 "$2"
}
# A click on a button or field found by its name on the accessibility bus, which gives places
# in the window's own units: times the scaling on the screen.
click_on() {
  local x y
  read -r x y < <(/usr/bin/python3 "$here/try-package-read.py" centre "$1" "$2") || return 1
  xdotool mousemove "$(awk -v v="$x" -v s="${QT_SCALE_FACTOR:-1}" 'BEGIN { printf "%d", v * s }')" \
    "$(awk -v v="$y" -v s="${QT_SCALE_FACTOR:-1}" 'BEGIN { printf "%d", v * s }')" click 1
}
# Exits the module with its Exit button (read over the accessibility bus) or Alt+X, waits for it
# and the launcher to close, and ends the scene non-zero when a check failed.
finish_module() {
  click_on "DEMO @ Vendors" Exit 2>/dev/null || press "$module" alt+x
  for _ in $(seq 1 100); do kill -0 "$pid" 2>/dev/null || break; sleep 0.2; done
  if kill -0 "$pid" 2>/dev/null; then
    check "the module closes with Exit" closed open
    kill "$pid"
  fi
  wait "$pid" || true
  if [ "$failures" -gt 0 ]; then
    echo "$failures checks failed." >&2
    exit 1
  fi
}
