#!/usr/bin/env bash
# The layering check covers the programs under tools/ too: it must pass a tree where they use
# the layers they may, and fail, naming the file, when a program includes from a layer above
# its own ceiling or from another program, when a program includes another program's bare
# "Header.h" it does not declare using, when a layer includes <folder/...> from above, and
# when a connection is opened outside the data layer.
set -euo pipefail
check=$1
tree=$(mktemp -d)
trap 'rm -rf "$tree"' EXIT
mkdir -p "$tree/src/common" "$tree/src/data" "$tree/src/app" "$tree/tools/launch" \
  "$tree/tools/demo" "$tree/tools/pgcopy" "$tree/tools/bench"
printf '#pragma once\n' >"$tree/src/app/Startup.h"
printf 'void f() { QSqlDatabase::addDatabase("QSQLITE", "x"); }\n' >"$tree/src/data/Connection.cpp"
printf '#include <data/Connection.h>\n#include "common/Numbers.h"\n#include <sys/resource.h>\n' \
  >"$tree/tools/launch/Fine.cpp"
printf '#include "app/Startup.h"\n' >"$tree/tools/bench/Fine.cpp"
mkdir -p "$tree/tools/placement"
printf '#pragma once\n' >"$tree/tools/placement/RunnerPlacement.h"
printf '#pragma once\n' >"$tree/tools/launch/StaffList.h"
printf '#include "RunnerPlacement.h"\n' >"$tree/tools/demo/FineCopy.cpp"
printf '#include "StaffList.h"\n' >"$tree/tools/launch/FineOwn.cpp"
if ! out=$(bash "$check" "$tree" 2>&1); then
  echo "the check failed a tree that keeps the rules:"
  echo "$out"
  exit 1
fi

printf '#include <app/Startup.h>\n' >"$tree/tools/launch/Reaches.cpp"
printf 'void g() { auto db = QSqlDatabase::addDatabase("QSQLITE", "y"); }\n' \
  >"$tree/tools/demo/Opens.cpp"
printf '#include "launch/Fine.h"\n' >"$tree/tools/pgcopy/Sideways.cpp"
printf '#include <app/Startup.h>\n' >"$tree/src/common/Angle.cpp"
printf '#include "StaffList.h"\n' >"$tree/tools/demo/Bare.cpp"
if out=$(bash "$check" "$tree" 2>&1); then
  echo "the check passed a tree that breaks the rules:"
  echo "$out"
  exit 1
fi
for expected in 'tools/launch/Reaches.cpp:1: launch includes from app, which is above it' \
  'tools/demo/Opens.cpp:1: a connection opened outside the data layer' \
  'tools/pgcopy/Sideways.cpp:1: pgcopy includes from the program launch' \
  'src/common/Angle.cpp:1: common includes from app, which is above it' \
  'tools/demo/Bare.cpp:1: demo includes StaffList.h of the program launch, which it does not use'; do
  grep -qF "$expected" <<<"$out" || {
    echo "the report does not say: $expected"
    echo "$out"
    exit 1
  }
done
if grep -qE 'Fine.cpp|FineCopy.cpp|FineOwn.cpp|src/data/Connection.cpp' <<<"$out"; then
  echo "an allowed include or connection was reported: $out"
  exit 1
fi
echo "a program's upward include and a connection outside the data layer reported"
