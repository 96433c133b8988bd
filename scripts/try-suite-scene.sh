#!/usr/bin/env bash
# Runs inside the virtual display of try-package.sh (WALK=suite): the suite's programs as the
# module starts them from the demo company, each step checked. Sign-in as DEMO; two demo vendors
# merged through Utilities, Merge two vendors (the company's chanum.exe), checked in the files
# with sqlite3; the printer set-up (prtctrl.exe) chosen to write PDFs; the version window
# (vinfo32.exe) read. A check that fails is named and the scene ends non-zero.
#   try-suite-scene.sh DATA_FOLDER OUT_DIR COMMAND [PICTURE_PREFIX]
set -euo pipefail
data=$1 out=$2 command=$3 prefix=${4:-}
here=$(cd "$(dirname "$0")" && pwd)
failures=0
# shellcheck source=scripts/try-walk-steps.sh
source "$here/try-walk-steps.sh"
ap() { sqlite3 "file:$data/ap.mdb?mode=ro" "$1"; }

[ -z "${QT_LINUX_ACCESSIBILITY_ALWAYS_ON:-}" ] ||
  /usr/bin/python3 "$here/try-package-read.py" active "-" 2>/dev/null || true
$command &
pid=$!
launcher=$(wait_window "A/P Master - Sign in")
sleep 0.8
xdotool windowfocus --sync "$launcher" 2>/dev/null || true
xdotool type --window "$launcher" --delay 20 "$data"
xdotool key --window "$launcher" Tab
sleep 0.5
xdotool key --window "$launcher" Tab Down
sleep 0.4
xdotool key --window "$launcher" alt+s
module=$(wait_window "DEMO @ Vendors")
sleep 1

# Merge: the two highest vendor numbers of the demo company, the higher into the lower.
read -r into from < <(ap "select min(vendnumber), max(vendnumber) from (select vendnumber from
  vendors order by vendnumber desc limit 2)" | tr '|' ' ')
invoices=$(ap "select count(*) from invoices where vendnumber in ($from, $into)")
money=$(ap "select printf('%.2f', coalesce(sum(invamount), 0)) from invoices where vendnumber in ($from, $into)")
press "$module" alt+t
sleep 0.5
press "$module" m
asked=$(wait_window "Velmora Office Message") || asked=""
check "Merge two vendors starts the company's chanum.exe" yes "$([ -n "$asked" ] && echo yes || echo no)"
if [ -n "$asked" ]; then
  sleep 0.6
  type_in "$asked" "$from"
  press "$asked" Return
  sleep 0.8
  asked=$(wait_window "Velmora Office Message")
  type_in "$asked" "$into"
  press "$asked" Return
  sleep 1
  asked=$(wait_window "Velmora Office Message")
  check "the merge question lies on the screen" yes "$(on_screen "$asked")"
  import -window root "$out/${prefix}merge-question.png"
  press "$asked" alt+y
  sleep 1.5
  asked=$(wait_window "Velmora Office Message")
  import -window root "$out/${prefix}merge-done.png"
  press "$asked" Return
  sleep 1
fi
check "the merged vendor $from is gone" 0 "$(ap "select count(*) from vendors where vendnumber = $from")"
check "vendor $into has the invoices of both" "$invoices" \
  "$(ap "select count(*) from invoices where vendnumber = $into")"
check "the invoices' money is unchanged" "$money" \
  "$(ap "select printf('%.2f', coalesce(sum(invamount), 0)) from invoices where vendnumber = $into")"
check "the files are whole" ok "$(ap "pragma integrity_check")"
check "the administrator's log has the merge" yes \
  "$(grep -q "Merged vendor $from into vendor $into" "$data/admlog.ini" 2>/dev/null && echo yes || echo no)"

# Printer set-up: no printer here, so the 1099 printing writes PDFs into a folder. The company's
# link to it is taken away first: the module finds the installed program by itself.
rm -f "$data/prtctrl.exe"
press "$module" alt+r
sleep 0.5
press "$module" s
setup=$(wait_window "Printer set-up") || setup=""
check "Printer setup starts the installed prtctrl without a link in the folder" yes "$([ -n "$setup" ] && echo yes || echo no)"
if [ -n "$setup" ]; then
  sleep 0.8
  check "the printer set-up lies on the screen" yes "$(on_screen "$setup")"
  press "$setup" alt+p End
  sleep 0.3
  press "$setup" alt+d
  type_in "$setup" "$HOME/1099-pdfs"
  import -window root "$out/${prefix}printer-setup.png"
  press "$setup" Return
  sleep 1
fi
check "the choice is kept for the desktop user" yes \
  "$(grep -rqs "1099-pdfs" "$HOME/.config" && echo yes || echo no)"

# Version information: the window shows the user and the program's version.
press "$module" alt+t
sleep 0.5
press "$module" v
version=$(wait_window "Version information") || version=""
check "Version information starts the company's vinfo32.exe" yes \
  "$([ -n "$version" ] && echo yes || echo no)"
if [ -n "$version" ]; then
  sleep 0.8
  check "the version window lies on the screen" yes "$(on_screen "$version")"
  import -window root "$out/${prefix}version.png"
  press "$version" Escape
  sleep 0.8
fi

finish_module
