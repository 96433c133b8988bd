#!/usr/bin/env bash
# Fails when a source file includes from a folder above its own, or opens a database connection
# of its own outside the data layer.
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
while IFS=: read -r file line _; do
  echo "$file:$line: a connection opened outside the data layer (use data/Connection.h)"
  bad=1
done < <(grep -nE 'QSqlDatabase::addDatabase' -r src tools --include='*.h' --include='*.cpp' \
  /dev/null 2>/dev/null | grep -v '^src/data/' || true)
if [ "$bad" -ne 0 ]; then
  echo "Includes go against the layering: ${layers[*]} (each may include only from those before" \
    "it; a program from the layers up to its own ceiling), or a connection bypasses src/data."
  exit 1
fi
echo "Layering holds: ${layers[*]}; programs: $(for p in "${!programs[@]}"; do printf '%s<=%s ' "$p" "${programs[$p]}"; done); shared: $(for p in "${!uses[@]}"; do printf '%s uses %s; ' "$p" "${uses[$p]}"; done)"
