#!/usr/bin/env bash
# The layering check must fail on a tree where a lower folder includes from a higher one, and
# name the file and the folders.
set -euo pipefail
check=$1
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir -p "$tree/src/common" "$tree/src/data" "$tree/src/app"
printf '#include "common/Numbers.h"\n' >"$tree/src/data/Fine.cpp"
printf '#pragma once\n' >"$tree/src/app/Startup.h"
printf '#include "app/Startup.h"\n' >"$tree/src/common/Reaches.cpp"
if out=$(bash "$check" "$tree" 2>&1); then
  echo "the check passed a tree with an upward include:"
  echo "$out"
  exit 1
fi
grep -q 'src/common/Reaches.cpp:1: common includes from app' <<<"$out" || {
  echo "the report does not name the file and folders:"
  echo "$out"
  exit 1
}
grep -q 'Fine.cpp' <<<"$out" && { echo "a downward include was reported: $out"; exit 1; }
echo "upward include reported"
