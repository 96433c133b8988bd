#!/usr/bin/env bash
# Pictures of the help as a user meets it: the module started on a data folder (one made by
# apmaster-demo) under a virtual display with no PDF viewer, Help pressed (Alt+H), and the text
# editor that comes up with the help text over the module; then Utilities, Version information
# and its window.
#   help-screenshot.sh DATA_FOLDER EDITOR.png VERSION.png
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
data=$(cd "$1" && pwd)
editor_png=$(realpath -m "$2")
version_png=$(realpath -m "$3")
module=${APMASTER_PROGRAM:-$here/build/src/apmaster}
runtime=$(mktemp -d)
trap 'rm -rf "$runtime"' EXIT
xvfb-run -a -s "-screen 0 1100x800x24" bash -c '
  set -euo pipefail
  cd "$1"
  export QT_QPA_PLATFORM=xcb XDG_RUNTIME_DIR="$5" APMASTER_PDF_VIEWER=/bin/false
  "$2" VDR99DEMO &
  module=$!
  wait_for() { for _ in $(seq 100); do xdotool search --onlyvisible --name "$1" 2>/dev/null | head -1 | grep . && return 0; sleep 0.1; done; return 1; }
  main=$(wait_for "^DEMO @ Vendors$")
  sleep 1
  xdotool windowfocus --sync "$main"
  xdotool key alt+h
  editor=$(wait_for "vendor1.txt - Velmora Office text editor")
  xdotool windowmove "$editor" 200 140
  sleep 1
  import -window root "$3"
  kill "$(xdotool getwindowpid "$editor")"
  sleep 0.5
  # Help took the window out of the always-on-top state, which gave it a new window.
  main=$(wait_for "^DEMO @ Vendors$")
  xdotool windowfocus --sync "$main"
  xdotool key alt+t
  sleep 0.5
  xdotool key v
  version=$(wait_for "^Version information$")
  sleep 1
  # The window alone: the module waits for it and does not repaint behind it meanwhile.
  import -window "$version" "$4"
  xdotool windowfocus --sync "$version" key Escape
  sleep 1
  kill $module 2>/dev/null || true
  wait $module 2>/dev/null || true
' _ "$data" "$module" "$editor_png" "$version_png" "$runtime"
echo "$editor_png $version_png"
