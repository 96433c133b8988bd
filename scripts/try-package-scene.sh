#!/usr/bin/env bash
# Runs inside the virtual display of try-package.sh: the launcher from the desktop entry's
# command, the data folder typed, DEMO chosen, the module's lookup by name, two screenshots.
# With WALK=full (try-package.sh sets it with SCALE) the walk goes on: notes follow Next, a
# changed vendor asks before Next, the user fields window comes up in front, and every shipped
# report opens through the company's cryprint.exe. What the module shows is read back over the
# accessibility bus (try-package-read.py); a check that fails is named and the scene ends
# non-zero after closing the module.
#   try-package-scene.sh DATA_FOLDER OUT_DIR COMMAND [PICTURE_PREFIX]
set -euo pipefail
data=$1 out=$2 command=$3 prefix=${4:-}
here=$(cd "$(dirname "$0")" && pwd)
failures=0
# shellcheck source=scripts/try-walk-steps.sh
source "$here/try-walk-steps.sh"
# A lookup by number from a vendor shown: Cancel (Lookup is enabled only on a cleared
# screen), Lookup, the number, Enter.
lookup_number() {
  press "$module" alt+c
  sleep 0.5
  press "$module" alt+l
  sleep 0.5
  type_in "$module" "$1"
  press "$module" Return
  sleep 0.8
}
# The accessibility bus and its registry are up before the module starts, as on a desktop.
[ "${WALK:-}" != full ] || /usr/bin/python3 "$here/try-package-read.py" active "-" 2>/dev/null || true
# The desktop entry's command, as the menu runs it (no field codes in it).
$command &
pid=$!
launcher=$(wait_window "A/P Master - Sign in")
sleep 0.8
xdotool windowfocus --sync "$launcher" 2>/dev/null || true
# The folder field has the focus: type the folder, Tab to read its staff list, Tab again to
# the list, Down from CLERK to DEMO.
xdotool type --window "$launcher" --delay 20 "$data"
xdotool key --window "$launcher" Tab
sleep 0.5
xdotool key --window "$launcher" Tab Down
sleep 0.4
[ -z "$prefix" ] || check "the sign-in window lies on the screen" yes "$(on_screen "$launcher")"
import -window "$launcher" "$out/${prefix}launcher.png"
xdotool key --window "$launcher" alt+s
module=$(wait_window "DEMO @ Vendors")
sleep 0.8
xdotool windowfocus --sync "$module" 2>/dev/null || true
# Lookup by name: from the entry back to the methods, one to the right, then the name.
xdotool key --window "$module" shift+Tab Right Tab
xdotool type --window "$module" --delay 40 "Acme"
xdotool key --window "$module" Return
sleep 0.8
import -window root "$out/${prefix}launched-vendor.png"

if [ "${WALK:-}" = full ]; then
  main="DEMO @ Vendors"
  check "the vendor screen lies on the screen" yes "$(on_screen "$module")"
  # Lookup opens on "Vendor #" again (the menu's default method).
  # Notes follow the vendor: 4569's note, then Next shows 4605 with its own (empty) note.
  lookup_number 4569
  check_field "the lookup shows vendor 4569" "$main" "Vendor #" 4569
  press "$module" alt+o
  sleep 0.6
  check_field "the notes box shows 4569's note" "$main" Notes "$(note_of 4569)"
  press "$module" alt+n
  sleep 0.8
  check_field "Next shows vendor 4605" "$main" "Vendor #" 4605
  check "vendor 4605 has no note in the file" "" "$(note_of 4605)"
  check_field "the notes box shows 4605's own (empty) note" "$main" Notes ""
  import -window root "$out/${prefix}notes.png"

  # A changed vendor asks before Next; Cancel stays on it with the change, No drops it.
  lookup_number 270
  check_field "the lookup shows vendor 270" "$main" "Vendor #" 270
  stored=$(sqlite3 "file:$data/ap.mdb?mode=ro" "select vendcontact from vendors where vendnumber = 270")
  check_field "Contact-1 shows the stored contact" "$main" Contact-1 "$stored"
  press "$module" alt+m
  sleep 0.6
  click_on "$main" Contact-1
  press "$module" ctrl+a
  type_in "$module" "Pat Newcomer"
  press "$module" alt+n
  question=$(wait_window "Save Changes?") || question=""
  check "Next asks before leaving the changed vendor" yes "$([ -n "$question" ] && echo yes || echo no)"
  if [ -n "$question" ]; then
    sleep 0.5
    check "the question lies on the screen" yes "$(on_screen "$question")"
    check "the question is in front of the vendor screen" yes "$(above "$question" "$module")"
    import -window root "$out/${prefix}save-question.png"
    press "$question" Escape
    sleep 0.6
  fi
  check_field "Cancel stays on vendor 270" "$main" "Vendor #" 270
  check_field "Cancel keeps the typed contact" "$main" Contact-1 "Pat Newcomer"
  # The screen's Cancel asks again; No drops the change.
  press "$module" alt+c
  question=$(wait_window "Save Changes?") || question=""
  check "Cancel asks before dropping the change" yes "$([ -n "$question" ] && echo yes || echo no)"
  if [ -n "$question" ]; then
    sleep 0.4
    press "$question" alt+n
    sleep 0.6
  fi
  check_field "No goes on with the Cancel: the screen is cleared" "$main" "Vendor #" ""
  check_field "No drops the typed contact" "$main" Contact-1 ""
  check "nothing was written" "$stored" \
    "$(sqlite3 "file:$data/ap.mdb?mode=ro" "select vendcontact from vendors where vendnumber = 270")"

  # The user fields window comes up in front of the vendor screen, active and on the screen.
  lookup_number 270
  check_field "the lookup shows vendor 270 again, unchanged" "$main" Contact-1 "$stored"
  press "$module" alt+u
  udf=$(wait_window "User Defined Information") || udf=""
  check "the user fields window opens" yes "$([ -n "$udf" ] && echo yes || echo no)"
  if [ -n "$udf" ]; then
    sleep 0.8
    check "the user fields window is in front of the vendor screen" yes "$(above "$udf" "$module")"
    check "the user fields window is the active one" yes "$(/usr/bin/python3 \
      "$here/try-package-read.py" active "User Defined Information" && echo yes || echo no)"
    check "the user fields window lies on the screen" yes "$(on_screen "$udf")"
    import -window root "$out/${prefix}user-fields.png"
    # Select numbers the described fields and Print writes the report record and opens the
    # vendor user fields report through cryprint.exe.
    press "$udf" alt+e
    sleep 0.4
    press "$udf" alt+p
    preview=$(wait_window "Vendor User-Defined Information") || preview=""
    check "Print opens the user fields report" yes "$([ -n "$preview" ] && echo yes || echo no)"
    if [ -n "$preview" ]; then
      sleep 2
      check "the user fields report lies on the screen" yes "$(on_screen "$preview")"
      import -window root "$out/${prefix}user-fields-report.png"
      press "$preview" Escape
      sleep 0.6
    fi
    # Its Exit clicked (Alt+X sent here after the report once typed an "x" into a value).
    click_on "User Defined Information" Exit
    sleep 0.6
    # Select changed the Sort boxes: the Exit may ask; nothing is kept.
    if asked=$(xdotool search --name "Save Changes?" 2>/dev/null | head -n 1) && [ -n "$asked" ]; then
      press "$asked" alt+n
      sleep 0.5
    fi
  fi

  # Every shipped report through the company's cryprint.exe: the preview opens on the screen
  # and closes with exit code 0, and the same request to a PDF file exits 0 with a first page
  # that carries the report's title. The user fields reports read the record Print wrote.
  record=$(ls "$HOME"/.cache/velmora/miscreport-*.mdb 2>/dev/null | head -n 1 || true)
  for definition in /usr/share/apmaster/reports/*.rpt; do
    report=$(basename "$definition")
    title=$(sed -n 's/^title: *//p' "$definition" | head -n 1)
    request=$(mktemp) pdf=$(mktemp --suffix=.pdf)
    extra=""
    case $report in miscinfo*) extra="DataFiles(5)=$record~"$'\n' ;; esac
    printf 'Crystal~\nReportFileName=%s~\nWindowTitle=~\nMarginTop=0~\nMarginLeft=0~\n%s' \
      "$report" "$extra" >"$request"
    (cd "$data" && ./cryprint.exe "$request") &
    runner=$!
    preview=$(wait_window "$title") || preview=""
    check "$report opens its preview" yes "$([ -n "$preview" ] && echo yes || echo no)"
    if [ -n "$preview" ]; then
      sleep 1.5
      check "$report's preview lies on the screen" yes "$(on_screen "$preview")"
      page=""
      for _ in $(seq 1 20); do
        page=$(/usr/bin/python3 "$here/try-package-read.py" label "$title" "Page 1 of" 2>/dev/null) &&
          break
        sleep 0.5
      done
      check "$report's preview shows its first page" yes "$([ -n "$page" ] && echo yes || echo no)"
      [ "$report" != rap002.rpt ] || import -window root "$out/${prefix}report.png"
      press "$preview" Escape
    fi
    status=0
    wait "$runner" || status=$?
    check "$report's preview ends with exit code 0" 0 "$status"
    printf 'Destination=File~\nPrintFileName=%s~\nPrintFileType=PDF~' "$pdf" >>"$request"
    status=0
    (cd "$data" && ./cryprint.exe "$request") || status=$?
    check "$report prints to PDF with exit code 0" 0 "$status"
    pages=$(pdfinfo "$pdf" 2>/dev/null | sed -n 's/^Pages: *//p' || true)
    check "$report's PDF has a first page" yes "$([ "${pages:-0}" -ge 1 ] && echo yes || echo no)"
    if grep -q '^layout: *labels' "$definition"; then # a sheet of labels has no heading
      check "$report's first page has labels" yes \
        "$(pdftotext -l 1 "$pdf" - 2>/dev/null | grep -q '[A-Za-z]' && echo yes || echo no)"
    else
      check "$report's first page carries its title" yes \
        "$(pdftotext -l 1 "$pdf" - 2>/dev/null | grep -qF "$title" && echo yes || echo no)"
    fi
    rm -f "$request" "$pdf"
  done
  xdotool windowfocus --sync "$module" 2>/dev/null || true
fi
if [ "${WALK:-}" = full ]; then
  click_on "DEMO @ Vendors" Exit
  # The module and the launcher close by themselves.
  for _ in $(seq 1 100); do kill -0 "$pid" 2>/dev/null || break; sleep 0.2; done
  if kill -0 "$pid" 2>/dev/null; then
    check "the module closes with Exit" closed open
    kill "$pid"
  fi
  wait "$pid" || true
else
  press "$module" alt+x
  wait "$pid"
fi
if [ "$failures" -gt 0 ]; then
  echo "$failures checks failed." >&2
  exit 1
fi
