#!/usr/bin/env bash
# Makes the Debian package from a build folder (default: build) and checks it: lintian finds no
# errors, the package holds every program and data file, apt can satisfy its dependencies, and
# the programs unpacked from it answer --help and --version and start on a demo company.
set -euo pipefail
cd "$(dirname "$0")/.."
build=$(realpath "${1:-build}")
work=$(mktemp -d)
module_pid=""
cleanup() {
  [ -z "$module_pid" ] || kill "$module_pid" 2>/dev/null || true
  rm -rf "$work"
}
trap cleanup EXIT
fail() { echo "package-check: $*" >&2; exit 1; }

(cd "$build" && cpack -G DEB -B "$work/out" >"$work/cpack.log") || { cat "$work/cpack.log"; exit 1; }
deb=$(ls "$work"/out/*.deb)
echo "package-check: $(basename "$deb")"

# Lintian as root says so on standard error; only its findings count.
lintian --fail-on error --no-tag-display-limit "$deb" 2>/dev/null | tee "$work/lintian.log"
if grep -q '^E:' "$work/lintian.log"; then fail "lintian reports errors"; fi

# Every program and data file the package must hold.
expected=(
  usr/bin/apmaster
  usr/bin/apmaster-launch
  usr/bin/apmaster-demo
  usr/bin/apmaster-import
  usr/bin/apmaster-mdb-reader
  usr/bin/apmaster-pgcopy
  usr/bin/cryprint
  usr/bin/chanum
  usr/bin/vinfo32
  usr/bin/prtctrl
  usr/bin/fprint
  usr/bin/vlmohelp
  usr/bin/vlmedit
  usr/share/apmaster/manual-ACCTPAY.pdf
  usr/share/apmaster/vendor1.txt
  usr/bin/venlookp
  usr/bin/gllookup
  usr/share/apmaster/reports/rap001.rpt
  usr/share/apmaster/reports/rap014.rpt
  usr/share/apmaster/reports/1099pv.rpt
  usr/share/apmaster/layouts/1099misc.lof
  usr/share/apmaster/layouts/1099int.lof
  usr/share/apmaster/layouts/1099div.lof
  usr/share/apmaster/layouts/1099nec.lof
  usr/share/applications/com.velmora.apmaster.desktop
  usr/share/metainfo/com.velmora.apmaster.metainfo.xml
  usr/share/icons/hicolor/scalable/apps/com.velmora.apmaster.svg
  usr/share/doc/apmaster/copyright
  usr/share/doc/apmaster/changelog.gz
)
dpkg-deb -c "$deb" | awk '{print $NF}' | sed 's|^\./||' >"$work/files"
for f in "${expected[@]}"; do
  grep -qx "$f" "$work/files" || fail "the package lacks $f"
done
echo "package-check: Depends: $(dpkg-deb -f "$deb" Depends)"
dpkg-deb -f "$deb" Depends | grep -q 'libqt6widgets6' || fail "the Qt libraries are not declared"

# apt on this Debian 12 machine can install it with everything it needs (a dry run).
apt-get install --simulate --no-install-recommends "$deb" >"$work/apt.log" 2>&1 ||
  { cat "$work/apt.log"; fail "apt cannot install the package"; }

# The unpacked package: the desktop entry and metadata validate, the programs answer.
root=$work/root
dpkg-deb -x "$deb" "$root"
desktop-file-validate "$root/usr/share/applications/com.velmora.apmaster.desktop"
appstreamcli validate --no-net --pedantic \
  "$root/usr/share/metainfo/com.velmora.apmaster.metainfo.xml" >/dev/null
for program in apmaster-launch apmaster-demo apmaster-import apmaster-pgcopy cryprint chanum vinfo32 prtctrl \
  vlmohelp vlmedit fprint venlookp gllookup; do
  env -u DISPLAY -u WAYLAND_DISPLAY "$root/usr/bin/$program" --version |
    grep -qx "$program 21.12" || fail "$program --version"
  env -u DISPLAY -u WAYLAND_DISPLAY "$root/usr/bin/$program" --help |
    grep -q "^Usage: .*$program" || fail "$program --help"
done

# The unpacked module starts on a demo company made by the unpacked generator and reaches its
# vendor screen: the staff row of DEMO then says "Vendors".
company=$work/company
"$root/usr/bin/apmaster-demo" "$company" --vendors 20 >/dev/null
mkdir -m 700 "$work/runtime"
(cd "$company" && XDG_RUNTIME_DIR=$work/runtime QT_QPA_PLATFORM=offscreen \
  exec "$root/usr/bin/apmaster" VDR99DEMO >"$work/module.log" 2>&1) &
module_pid=$!
location() { sqlite3 "file:$company/user.mdb?mode=ro" \
  "select location from staff where username = 'DEMO'" 2>/dev/null || true; }
for _ in $(seq 100); do
  [ "$(location)" = "Vendors" ] && break
  kill -0 "$module_pid" 2>/dev/null || break
  sleep 0.2
done
[ "$(location)" = "Vendors" ] || { cat "$work/module.log"; fail "the installed module did not start"; }
kill "$module_pid"; wait "$module_pid" 2>/dev/null || true; module_pid=""

# A report opens on that company with nothing copied by hand: the module finds cryprint.exe in
# the data folder, and the runner it leads to prints the vendor list by name.
[ -x "$company/cryprint.exe" ] || fail "the demo company has no cryprint.exe"
[ "$(readlink -f "$company/cryprint.exe")" = "$root/usr/bin/cryprint" ] ||
  fail "cryprint.exe leads to $(readlink -f "$company/cryprint.exe"), not the package's runner"
printf 'Crystal~\nReportFileName=rap001.rpt~\nWindowTitle=~\nMarginTop=0~\nMarginLeft=0~\nSortFields(0)=+{vendors.vendname}~\nDestination=File~\nPrintFileName=%s~\nPrintFileType=PDF~' \
  "$work/vendors.pdf" >"$work/request.txt"
(cd "$company" && env -u DISPLAY -u WAYLAND_DISPLAY ./cryprint.exe "$work/request.txt") ||
  fail "the vendor list did not print on the demo company"
first=$(sqlite3 "file:$company/ap.mdb?mode=ro" \
  "select vendnumber from vendors order by vendname limit 1")
pdftotext -layout "$work/vendors.pdf" - >"$work/vendors.txt"
grep -q "Vendor List" "$work/vendors.txt" && grep -qw "$first" "$work/vendors.txt" ||
  fail "the vendor list lacks its title or the first vendor, $first"
echo "package-check: the vendor list prints on a new demo company"

# Help works on that company: the help viewer, the editor, the manual and the help text are there,
# and the manual is the package's, with its chapters.
for f in vlmohelp.exe vlmedit.exe manual-ACCTPAY.pdf vendor1.txt; do
  [ -e "$company/$f" ] || fail "the demo company has no $f"
done
[ "$(readlink -f "$company/manual-ACCTPAY.pdf")" = "$root/usr/share/apmaster/manual-ACCTPAY.pdf" ] ||
  fail "manual-ACCTPAY.pdf leads to $(readlink -f "$company/manual-ACCTPAY.pdf")"
pdftotext "$company/manual-ACCTPAY.pdf" "$work/manual.txt"
grep -q "Troubleshooting messages" "$work/manual.txt" || fail "the installed manual lacks its chapters"
echo "package-check: the demo company has the help viewer, the editor and the manual"
echo "package-check: the package is fine"
