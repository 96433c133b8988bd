#!/usr/bin/env bash
# Draws the folders of src/ and tools/ and the includes between them, read from the code's own
# #include lines, as a Graphviz graph: docs/architecture.dot and docs/architecture.svg (the SVG
# only where Graphviz's `dot` is installed; scripts/setup.sh installs it).
# An arrow A -> B (N) says that N include lines in folder A name a header of folder B.
# Usage: draw-architecture.sh [OUT_FOLDER]   (default: docs)
set -euo pipefail
cd "$(dirname "$0")/.."
out=${1:-docs}
mkdir -p "$out"

# Every header of the module and the programs, with the folder it belongs to (src/X or tools/X).
headers=$(find src tools -name '*.h' | awk -F/ '{ print $NF " " $1 "/" $2 " " $2 "/" $NF }')

# Every include line of a source file: "folder included-path".
includes=$(grep -rE '^[[:space:]]*#[[:space:]]*include[[:space:]]*[<"][^>"]+[>"]' \
             --include='*.h' --include='*.cpp' src tools |
           sed -E 's#^(src|tools)/([^/]+)/[^:]*:[[:space:]]*\#[[:space:]]*include[[:space:]]*[<"]([^>"]+)[>"].*#\1/\2 \3#')

# "edge FROM TO N" and "node FOLDER" lines, each kind sorted so that the drawing changes only
# when the includes do.
graph=$(awk -v headers="$headers" '
  BEGIN {
    n = split(headers, lines, "\n")
    for (i = 1; i <= n; i++) {
      split(lines[i], f, " ")
      owners[f[1]] = owners[f[1]] (owners[f[1]] == "" ? "" : " ") f[2]   # by file name
      path[f[3]] = f[2]                                                   # by folder/file
    }
  }
  {
    from = $1; name = $2; to = ""
    if (name in path) {
      to = path[name]                     # "data/Databases.h": the folder it names
    } else if (name !~ /\//) {
      k = split(owners[name], candidates, " ")
      for (c = 1; c <= k; c++) if (candidates[c] == from) to = from
      if (to == "" && k > 0) to = candidates[1]   # a header found through a library
    }
    if (to != "" && to != from) count[from " " to]++
    seen[from] = 1
  }
  END {
    for (d in seen) print "node " d
    for (e in count) print "edge " e " " count[e]
  }' <<<"$includes" | sort)

{
  echo "// Drawn by scripts/draw-architecture.sh from the include lines; do not edit."
  echo "digraph folders {"
  echo "  rankdir=BT; graph [fontname=\"DejaVu Sans\"]; node [shape=box, fontname=\"DejaVu Sans\", fontsize=11];"
  echo "  edge [fontname=\"DejaVu Sans\", fontsize=9, color=\"#555555\"];"
  echo "  subgraph cluster_src { label=\"src/: the module, one layer a folder\"; color=\"#3465a4\";"
  awk '$1 == "node" && $2 ~ /^src\// { print "    \"" $2 "\";" }' <<<"$graph"
  echo "  }"
  echo "  subgraph cluster_tools { label=\"tools/: the programs\"; color=\"#4e9a06\";"
  awk '$1 == "node" && $2 ~ /^tools\// { print "    \"" $2 "\";" }' <<<"$graph"
  echo "  }"
  # An include from one program's folder into another's is drawn red.
  awk '$1 == "edge" {
         red = ($2 ~ /^tools\// && $3 ~ /^tools\//) ? ", color=\"#cc0000\", fontcolor=\"#cc0000\"" : ""
         print "  \"" $2 "\" -> \"" $3 "\" [label=\"" $4 "\"" red "];"
       }' <<<"$graph"
  echo "}"
} >"$out/architecture.dot"
echo "$out/architecture.dot"
if command -v dot >/dev/null; then
  dot -Tsvg "$out/architecture.dot" -o "$out/architecture.svg"
  echo "$out/architecture.svg"
else
  echo "Graphviz (dot) is not installed: bash scripts/setup.sh installs it; no SVG drawn." >&2
fi
