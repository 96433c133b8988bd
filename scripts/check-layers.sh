#!/usr/bin/env bash
# Fails when a source file includes from a folder above its own, opens a database connection
# of its own outside the data layer, or when an area of the vendor screen holds another (below).
# The folders of src/ are layers, bottom first; a folder may include from itself and from the
# folders before it, never after. Each program under tools/ sits above the layers and may
# include from the layers up to the one named for it below, never from another program's
# folder. Both "folder/..." and <folder/...> includes count (an angle include of a folder that
# is neither a layer nor a program, such as <sys/...>, is the system's). Only src/data may call
# QSqlDatabase::addDatabase: every other connection is made through it. A program reaches
# another program's header (a bare "Header.h" found through that program's library) only where
# the uses list below says so. What several programs share lives in a library folder of tools/
# (no program of its own, listed below), which any program may include from.
# Usage: check-layers.sh [ROOT]   (ROOT: the checkout to check; default: this one)
set -euo pipefail
cd "${1:-$(dirname "$0")/..}"
layers=(common data keysend lists yearend reports utilities frmmisc vendorscreen app)
# Each program and the highest layer it may include from.
declare -A programs=([bench]=app [chanum]=utilities [cryprint]=data [demo]=data [form1099]=yearend [fprint]=reports
  [import]=data [launch]=data [prtctrl]=reports
  [pgcopy]=data [vinfo32]=data [venlookp]=keysend [gllookup]=keysend
  [vlmohelp]=common [vlmedit]=common [manual]=common)
# The libraries under tools/ that several programs share (no program of their own), each with
# the highest layer it may include from: the placement of the suite's programs into a new
# company (the demo generator and the import) and the pickers' window (venlookp, gllookup).
declare -A libraries=([placement]=common [picker]=keysend)
# The other programs whose headers a program may use: the benchmarks time the runner's and the
# vendor picker's own classes.
declare -A uses=([bench]="cryprint venlookp")
rank() {
  local i
  for i in "${!layers[@]}"; do
    [ "${layers[$i]}" = "$1" ] && { echo "$i"; return; }
  done
  echo -1
}
bad=0
# Prints "file:line:folder:quote" for every include of a folder ("quote" is " or <).
includes() {
  grep -nE '^[[:space:]]*#[[:space:]]*include[[:space:]]*["<][^/">]+/' -r "$1" \
    --include='*.h' --include='*.cpp' /dev/null |
    sed -E 's/^([^:]*):([^:]*):[[:space:]]*#[[:space:]]*include[[:space:]]*(["<])([^/">]+)\/.*/\1:\2:\4:\3/'
}
# Checks the includes of a folder against the highest layer it may use (its rank).
check() {
  local dir=$1 own=$2 name=$3 file line included quote other
  while IFS=: read -r file line included quote; do
    other=$(rank "$included")
    if [ -n "${programs[$included]+x}" ] || [ "$included" = tools ]; then
      echo "$file:$line: $name includes from the program $included, which is no layer"
      bad=1
    elif [ "$other" -lt 0 ]; then
      [ "$quote" = '<' ] && continue # a system header
      echo "$file:$line: $name includes from $included, which is not one of the layers"
      bad=1
    elif [ "$other" -gt "$own" ]; then
      echo "$file:$line: $name includes from $included, which is above it"
      bad=1
    fi
  done < <(includes "$dir")
}
for dir in src/*/; do
  folder=$(basename "$dir")
  own=$(rank "$folder")
  if [ "$own" -lt 0 ]; then
    echo "src/$folder: a folder that is not one of the layers (${layers[*]})"
    bad=1
    continue
  fi
  check "$dir" "$own" "$folder"
done
# Reports every bare "Header.h" of a program that is not its own but another program's (a
# library's is anyone's), unless the uses list names that program.
sideways() {
  local program=$1 file line header owner
  while IFS=: read -r file line header; do
    [ -n "$(find "tools/$program" -name "$header" -print -quit)" ] && continue
    for owner in tools/*/; do
      owner=$(basename "$owner")
      [ "$owner" = "$program" ] && continue
      [ -n "${libraries[$owner]+x}" ] && continue
      [ -n "$(find "tools/$owner" -name "$header" -print -quit)" ] || continue
      [[ " ${uses[$program]:-} " == *" $owner "* ]] && continue
      echo "$file:$line: $program includes $header of the program $owner, which it does not use"
      bad=1
    done
  done < <(grep -nE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"[^/"]+"' -r "tools/$program" \
    --include='*.h' --include='*.cpp' /dev/null |
    sed -E 's/^([^:]*):([^:]*):[[:space:]]*#[[:space:]]*include[[:space:]]*"([^"]+)".*/\1:\2:\3/')
}
for dir in tools/*/; do
  [ -d "$dir" ] || continue
  program=$(basename "$dir")
  if [ -n "${libraries[$program]+x}" ]; then
    check "$dir" "$(rank "${libraries[$program]}")" "$program"
    sideways "$program"
    continue
  fi
  if [ -z "${programs[$program]+x}" ]; then
    echo "tools/$program: a program the layer check does not know (add it to programs or libraries)"
    bad=1
    continue
  fi
  check "$dir" "$(rank "${programs[$program]}")" "$program"
  sideways "$program"
done
# The vendor screen's areas (the classes of src/lists and src/vendorscreen) hold no other area
# (a class of those folders, or of the reports, utilities and user-defined fields the window
# also builds): what one has to tell another it reports with a signal, and what it has to ask another it is handed as a function, both wired by the
# window, which builds them all. A member that is a reference, a pointer, an owned pointer or a
# copy of another area fails; the values every area shares are named below.
area_folders=(lists vendorscreen)
area_classes_folders=(lists reports utilities frmmisc vendorscreen)
composition_root=VendorWindow
# The vendor on the screen, the screen's values, the vendor field boxes, the lists' widgets and
# the grid model the lists own.
shared_classes=" CurrentVendor ScreenState VendorFieldBoxes ListWidgets RecordSourceModel "
# Prints the classes a header defines (not those it only declares), one a line.
defined_classes() {
  grep -hoE '^(class|struct)[[:space:]]+[A-Z][A-Za-z0-9_]*([[:space:]]+final)?[[:space:]]*(:|\{|$)' \
    "$@" /dev/null 2>/dev/null | awk '{ print $2 }' | sed -E 's/[:{].*//' || true
}
area_headers() {
  local folder
  for folder in "$@"; do
    [ -d "src/$folder" ] && find "src/$folder" -maxdepth 1 -name '*.h'
  done
  return 0
}
mapfile -t area_class_list < <(area_headers "${area_classes_folders[@]}" | xargs -r cat /dev/null |
  defined_classes /dev/stdin | sort -u)
declare -A is_area=()
for class in "${area_class_list[@]}"; do
  [[ "$shared_classes" == *" $class "* ]] || is_area[$class]=1
done
while read -r header; do
  [ -n "$header" ] || continue
  own=" $(defined_classes "$header" | tr '\n' ' ') "
  [[ "$own" == *" $composition_root "* ]] && continue
  while IFS=: read -r line held; do
    [ -n "${is_area[$held]+x}" ] || continue
    [[ "$own" == *" $held "* ]] && continue
    echo "$header:$line: holds $held, another area of the vendor screen (report to it with a" \
      "signal, or ask it through a function, wired by the window)"
    bad=1
  done < <(grep -nE '^[[:space:]]+(const[[:space:]]+)?((std::unique_ptr|std::shared_ptr|QPointer)<[[:space:]]*)?[A-Z][A-Za-z0-9_]*[[:space:]]*>?[[:space:]]*[&*]?[[:space:]]*[A-Za-z_][A-Za-z0-9_]*[[:space:]]*(=[^;]*|\{[^;]*\})?;' \
    "$header" | sed -E 's/^([0-9]+):[[:space:]]+(const[[:space:]]+)?((std::unique_ptr|std::shared_ptr|QPointer)<[[:space:]]*)?([A-Z][A-Za-z0-9_]*).*/\1:\5/')
done < <(area_headers "${area_folders[@]}")
while IFS=: read -r file line _; do
  echo "$file:$line: a connection opened outside the data layer (use data/Connection.h)"
  bad=1
done < <(grep -nE 'QSqlDatabase::addDatabase' -r src tools --include='*.h' --include='*.cpp' \
  /dev/null 2>/dev/null | grep -v '^src/data/' || true)
if [ "$bad" -ne 0 ]; then
  echo "Includes go against the layering: ${layers[*]} (each may include only from those before" \
    "it; a program from the layers up to its own ceiling), a connection bypasses src/data, or" \
    "an area of the vendor screen holds another."
  exit 1
fi
echo "Layering holds: ${layers[*]}; programs: $(for p in "${!programs[@]}"; do printf '%s<=%s ' "$p" "${programs[$p]}"; done); shared: $(for p in "${!uses[@]}"; do printf '%s uses %s; ' "$p" "${uses[$p]}"; done)"
