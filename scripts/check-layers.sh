#!/usr/bin/env bash
# Fails when a source file includes from a folder above its own. The folders of src/ are layers,
# bottom first; a folder may include from itself and from the folders before it, never after.
# Usage: check-layers.sh [ROOT]   (ROOT: the checkout to check; default: this one)
set -euo pipefail
cd "${1:-$(dirname "$0")/..}"
layers=(common data keysend lists yearend reports utilities frmmisc vendorscreen app)
rank() {
  local i
  for i in "${!layers[@]}"; do
    [ "${layers[$i]}" = "$1" ] && { echo "$i"; return; }
  done
  echo -1
}
bad=0
for dir in src/*/; do
  folder=$(basename "$dir")
  own=$(rank "$folder")
  if [ "$own" -lt 0 ]; then
    echo "src/$folder: a folder that is not one of the layers (${layers[*]})"
    bad=1
    continue
  fi
  while IFS=: read -r file line text; do
    included=$(sed -E 's/^[[:space:]]*#[[:space:]]*include[[:space:]]*"([^/"]+)\/.*/\1/' <<<"$text")
    other=$(rank "$included")
    if [ "$other" -lt 0 ] || [ "$other" -gt "$own" ]; then
      echo "$file:$line: $folder includes from $included, which is above it"
      bad=1
    fi
  done < <(grep -nE '^[[:space:]]*#[[:space:]]*include[[:space:]]*"[^/"]+/' -r "$dir" --include='*.h' --include='*.cpp' /dev/null | sed 's/^\([^:]*\):\([^:]*\):/\1:\2:/')
done
if [ "$bad" -ne 0 ]; then
  echo "Includes go against the layering: ${layers[*]} (each may include only from those before it)."
  exit 1
fi
echo "Layering holds: ${layers[*]}"
