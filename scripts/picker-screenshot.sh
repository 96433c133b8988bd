#!/usr/bin/env bash
# Shows a picker (venlookp or gllookup) on a data folder under a virtual display with a search
# typed into it, and saves a screenshot of its window as a PNG.
#   picker-screenshot.sh venlookp|gllookup DATA_FOLDER OUTPUT.png [TYPED]
# SCREEN sets the virtual screen (default 1100x800x24).
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
picker=$1
data=$(cd "$2" && pwd)
out=$(realpath -m "$3")
typed=${4:-}
program=$here/build/tools/$picker/$picker
if [ "${INSIDE_XVFB:-}" != 1 ]; then
  INSIDE_XVFB=1 exec xvfb-run -a -s "-screen 0 ${SCREEN:-1100x800x24}" "$0" "$@"
fi
cd "$data"
APMASTER_PICKER_KEYS=$typed "$program" &
pid=$!
window=
for _ in $(seq 100); do
  window=$(xdotool search --name '^Find a ' 2>/dev/null | head -n1 || true)
  [ -n "$window" ] && break
  sleep 0.1
done
[ -n "$window" ] || { kill "$pid"; echo "the picker's window did not show" >&2; exit 1; }
sleep 1 # the typed keys and the list's repaint
import -window "$window" "$out"
kill "$pid"
wait "$pid" 2>/dev/null || true
echo "$out"
