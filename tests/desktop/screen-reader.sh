#!/usr/bin/env bash
# Starts A/P Master on a fresh demo company under a virtual 1366x768 display with a session bus
# of its own, and has screen_reader.py read and drive it over the desktop's accessibility bus
# (AT-SPI), as a screen reader does. Exit 77 (skipped) when the bus cannot be had here.
#   screen-reader.sh APMASTER_PROGRAM DEMO_PROGRAM
set -euo pipefail
program=$(realpath "$1")
demo=$(realpath "$2")
here=$(cd "$(dirname "$0")" && pwd)

skip() { echo "SKIPPED: $*"; exit 77; }
command -v xvfb-run >/dev/null || skip "xvfb-run is not installed (scripts/setup.sh installs it)"
command -v dbus-run-session >/dev/null || skip "dbus-run-session is not installed"
/usr/bin/python3 -c 'import pyatspi' 2>/dev/null ||
  skip "python3-pyatspi is not installed (scripts/setup.sh installs it)"
[ -x /usr/libexec/at-spi-bus-launcher ] ||
  skip "at-spi2-core (the accessibility bus) is not installed"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$demo" "$work/company" >/dev/null
mkdir -m 700 "$work/run"
export XDG_RUNTIME_DIR=$work/run XDG_CONFIG_HOME=$work/config

# Inside the display and the session: the module in its data folder, then the reader.
xvfb-run -a -s "-screen 0 1366x768x24" dbus-run-session -- bash -c '
  set -u
  cd "$1/company"
  QT_QPA_PLATFORM=xcb QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1 QT_ACCESSIBILITY=1 \
    "$2" VDR99DEMO >"$1/module.log" 2>&1 &
  module=$!
  timeout 120 /usr/bin/python3 "$3" apmaster
  reader=$?
  # The reader pressed Exit: the module closes by itself, with its closing steps.
  for _ in $(seq 100); do kill -0 $module 2>/dev/null || break; sleep 0.1; done
  if kill -0 $module 2>/dev/null; then
    echo "the module did not close after Exit"; kill $module; cat "$1/module.log"; exit 1
  fi
  wait $module
  status=$?
  [ $reader -eq 0 ] || { cat "$1/module.log"; exit $reader; }
  [ $status -eq 0 ] || { echo "the module ended with $status"; cat "$1/module.log"; exit 1; }
' screen-reader "$work" "$program" "$here/screen_reader.py"
