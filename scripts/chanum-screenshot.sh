#!/usr/bin/env bash
# Starts the vendor-number utility's merge on a data folder under a virtual display, as the vendor
# screen starts it, types two vendor numbers, saves a screenshot of its question and answers No.
#   chanum-screenshot.sh DATA_FOLDER OUTPUT.png FROM INTO
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
data=$(cd "$1" && pwd)
out=$(realpath -m "$2")
program=${CHANUM_PROGRAM:-$here/build/tools/chanum/chanum}
xvfb-run -a -s "-screen 0 900x700x24" bash -c '
  set -euo pipefail
  cd "$1"
  printf DEMO | xclip -selection clipboard
  QT_QPA_PLATFORM=xcb "$2" MVN99DEMO &
  utility=$!
  type_number() {
    for _ in $(seq 50); do xdotool search --name "Velmora Office Message" >/dev/null && break; sleep 0.1; done
    sleep 0.3; xdotool type "$1"; xdotool key Return; sleep 0.5
  }
  type_number "$4"
  type_number "$5"
  sleep 0.5
  import -window root "$3"
  xdotool key Escape
  wait $utility || true
' _ "$data" "$program" "$out" "$3" "$4"
echo "$out"
