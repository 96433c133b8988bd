#!/usr/bin/env bash
# Runs inside the virtual display of try-package.sh (WALK=suite): the suite's programs as the
# module starts them from the demo company, each step checked. Sign-in as DEMO; a vendor found
# by its city in the vendor picker (venlookp.exe, F5) and an account picked for it (gllookup.exe);
# two demo vendors
# merged through Utilities, Merge two vendors (the company's chanum.exe), checked in the files
# with sqlite3; the printer set-up (prtctrl.exe) chosen to write PDFs; the version window
# (vinfo32.exe) read; the NEC layout's payer lines moved in the layout adjuster (fprint.exe) and
# a test page printed; Help. A check that fails is named and the scene ends non-zero.
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

# The vendor picker: F5 in the lookup entry, part of a vendor's city typed, Enter: the vendor
# of that city is shown.
main="DEMO @ Vendors"
city=$(ap "select vendcity from vendors where vendnumber = 4569")
press "$module" F5
picker=$(wait_window "^Find a vendor") || picker=""
check "F5 in the lookup opens the vendor picker" yes "$([ -n "$picker" ] && echo yes || echo no)"
if [ -n "$picker" ]; then
  sleep 0.8
  check "the vendor picker lies on the screen" yes "$(on_screen "$picker")"
  type_in "$picker" "$city"
  sleep 0.8
  import -window root "$out/${prefix}vendor-picker.png"
  press "$picker" Return
  sleep 1.2
fi
check_field "the vendor picked by its city ($city) is shown" "$main" City "$city"
picked=$(shown "$main" "Vendor #")

# The account picker: Modify, F5 in the G/L account field, part of an account's name typed,
# Enter: the account goes into the field and the module's check takes it.
account=$(sqlite3 "file:$data/gl.mdb?mode=ro" "select glacctnum, glacctname from gl0 order by glacctnum limit 1 offset 3" | tr '|' ' ')
number=${account%% *} name=${account#* }
stored=$(ap "select coalesce(vendglacct, '') from vendors where vendnumber = ${picked:-0}")
press "$module" alt+m
sleep 0.6
click_on "$main" "G/L Acct" || check "the G/L account field is found" found missing
press "$module" F5
picker=$(wait_window "^Find a G/L account") || picker=""
check "F5 in the G/L account field opens the account picker" yes "$([ -n "$picker" ] && echo yes || echo no)"
if [ -n "$picker" ]; then
  sleep 0.8
  type_in "$picker" "${name%% *}"
  sleep 0.8
  import -window root "$out/${prefix}account-picker.png"
  press "$picker" Return
  sleep 1.2
fi
gl=$(shown "$main" "G/L Acct")
check "the account found by \"${name%% *}\" is in the G/L field" "$(awk -v n="$number" 'BEGIN { print n + 0 }')" \
  "$(awk -v n="${gl:-0}" 'BEGIN { print n + 0 }')"
import -window root "$out/${prefix}account-taken.png"
# Cancel, and No to saving: nothing of the walk's picks is kept.
press "$module" alt+c
if asked=$(wait_window "Save Changes?"); then
  press "$asked" alt+n
  sleep 0.6
fi
check "vendor $picked keeps its stored account" "$stored" \
  "$(ap "select coalesce(vendglacct, '') from vendors where vendnumber = ${picked:-0}")"

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
mkdir -p "$HOME/1099-pdfs"
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

# The 1099 layout adjuster: the NEC payer's name, address and telephone lines (elements 2 to 6)
# a quarter inch lower, typed into the table; a test page into the set-up's PDF folder; Save.
press "$module" alt+r
sleep 0.5
press "$module" 1
sleep 0.5
press "$module" a
adjuster=$(wait_window "Adjust 1099 forms printing") || adjuster=""
check "Adjust 1099 forms printing starts the company's fprint.exe" yes \
  "$([ -n "$adjuster" ] && echo yes || echo no)"
if [ -n "$adjuster" ]; then
  sleep 1
  check "the layout adjuster lies on the screen" yes "$(on_screen "$adjuster")"
  press "$adjuster" alt+f End Return
  sleep 0.8
  check "the form chosen is the 1099-NEC" yes \
    "$(xdotool getwindowname "$adjuster" | grep -q '^1099nec.lof' && echo yes || echo no)"
  click_on "1099nec.lof" Elements || check "the table of elements is found" found missing
  press "$adjuster" ctrl+Home Down Down End
  for y in 0.55 0.69 0.83 0.97 1.11; do
    type_in "$adjuster" "$y"
    press "$adjuster" Return Down
  done
  sleep 0.5
  import -window root "$out/${prefix}layout-adjuster.png"
  press "$adjuster" alt+s
  sleep 1
  press "$adjuster" alt+t
  said=$(wait_window "^Adjust 1099 forms printing$") || said=""
  if [ -n "$said" ]; then
    sleep 0.5
    import -window root "$out/${prefix}layout-test-page.png"
    press "$said" Return
    sleep 0.5
  fi
  press "$adjuster" alt+c
  sleep 0.8
fi
check "the NEC payer's lines are saved a quarter inch lower" "0.55 0.69 0.83 0.97 1.11" \
  "$(sed -n '3,7p' "$data/1099nec.lof" | tr -d '\r' | awk -F, '{ printf "%s%s", sep, $NF; sep = " " }')"
testpage=$(ls "$HOME"/1099-pdfs/*.pdf 2>/dev/null | head -n 1 || true)
check "the test page is written into the PDF folder" yes \
  "$([ -n "$testpage" ] && pdfinfo "$testpage" >/dev/null 2>&1 && echo yes || echo no)"

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

# Help: the manual goes to the desktop's PDF viewer; this virtual desktop has none, so the help
# viewer says so and the module falls back to the plain help text in the suite's editor.
manual=$(pdftotext /usr/share/apmaster/manual-ACCTPAY.pdf - 2>/dev/null || true)
check "the manual is installed, with its chapter on the lookup" yes \
  "$(grep -qF "Lookup methods" <<<"$manual" && echo yes || echo no)"
press "$module" alt+h
editor=$(wait_window "vendor1.txt - Velmora Office text editor") || editor=""
check "Help without a PDF viewer opens the help text in the editor" yes \
  "$([ -n "$editor" ] && echo yes || echo no)"
if [ -n "$editor" ]; then
  sleep 0.8
  check "the editor lies on the screen" yes "$(on_screen "$editor")"
  import -window root "$out/${prefix}help-text.png"
  press "$editor" alt+c
  sleep 0.6
fi

finish_module
