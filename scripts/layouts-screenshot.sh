#!/usr/bin/env bash
# Starts the 1099 layout adjuster on a data folder under a virtual display, as the module's
# "Adjust 1099 forms printing" starts it, picks an element, saves a screenshot and closes it;
# with a third argument also a screenshot of the printer set-up.
#   layouts-screenshot.sh DATA_FOLDER FPRINT.png [PRTCTRL.png]
set -euo pipefail
here=$(cd "$(dirname "$0")/.." && pwd)
data=$(cd "$1" && pwd)
out=$(realpath -m "$2")
setup=${3:+$(realpath -m "$3")}
fprint=${FPRINT_PROGRAM:-$here/build/tools/fprint/fprint}
prtctrl=${PRTCTRL_PROGRAM:-$here/build/tools/prtctrl/prtctrl}
xvfb-run -a -s "-screen 0 1280x900x24" bash ${SCREENSHOT_TRACE:+-x} -c '
  set -euo pipefail
  cd "$1"
  wait_for() {
    for _ in $(seq 80); do xdotool search --name "$1" >/dev/null 2>&1 && return; sleep 0.1; done
    echo "no window \"$1\"" >&2; return 1
  }
  QT_QPA_PLATFORM=xcb "$2" 1099nec.lof &
  adjuster=$!
  wait_for "Adjust 1099 forms printing"
  window=$(xdotool search --name "Adjust 1099 forms printing" | head -1)
  xdotool windowmove "$window" 0 0 windowsize "$window" 1280 900
  sleep 1
  import -window root "$3"
  kill "$adjuster"
  wait $adjuster || true
  if [ -n "$5" ]; then
    QT_QPA_PLATFORM=xcb "$4" &
    setup=$!
    sleep 1.5
    import -window root "$5.full.png"
    convert "$5.full.png" -trim +repage "$5"
    rm -f "$5.full.png"
    kill "$setup" 2>/dev/null || true
    wait $setup || true
  fi
' _ "$data" "$fprint" "$out" "$prtctrl" "$setup"
echo "$out"
