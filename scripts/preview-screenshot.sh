#!/usr/bin/env bash
# Opens the report runner's preview of a report on a data folder under a virtual display and
# saves a screenshot of it as a PNG.
#   preview-screenshot.sh DATA_FOLDER OUTPUT.png [REPORT_FILE] [SORT_FIELD]
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
data=$(cd "$1" && pwd)
out=$(realpath -m "$2")
report=${3:-rap001.rpt}
sort=${4:-+{vendors.vendname\}}
runner=${CRYPRINT_PROGRAM:-$here/build/tools/cryprint/cryprint}
request=$(mktemp)
trap 'rm -f "$request"' EXIT
printf 'Crystal~\nReportFileName=%s~\nWindowTitle=~\nMarginTop=0~\nMarginLeft=0~\nSortFields(0)=%s~' \
  "$report" "$sort" > "$request"
xvfb-run -a -s "-screen 0 1000x1000x24" bash -c '
  cd "$1"
  QT_QPA_PLATFORM=xcb "$2" "$3" &
  pid=$!
  win=""
  for _ in $(seq 1 100); do
    win=$(xdotool search --name "^$5" 2>/dev/null | head -n 1 || true)
    [ -n "$win" ] && break
    sleep 0.2
  done
  sleep 4
  import -window root "$4"
  [ -n "$win" ] && xdotool key --window "$win" Escape
  sleep 0.5
  kill "$pid" 2>/dev/null || true
  wait "$pid" 2>/dev/null || true
' _ "$data" "$runner" "$request" "$out" "Vendor List"
echo "$out"
