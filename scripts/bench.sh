#!/usr/bin/env bash
# Runs the benchmarks and prints all rows as a table in Markdown, each with its floor.
#
#   scripts/bench.sh [--save FILE] [--against FILE] [--filter REGEX]
#
#   --save FILE      keeps the figures, to compare with later
#   --against FILE   puts the figures that were kept there beside these, and marks what lost by more
#                    than a tenth
#   --filter REGEX   only the rows whose names match
#
# A figure of one machine says little on another, and little while others work on it: what counts is
# the ratio to a floor that was taken in the same run. Rows without a floor are compared by time.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
save= against= filter=.
while [ $# -gt 0 ]; do
  case $1 in
    --save) save=$2 ;;
    --against) against=$2 ;;
    --filter) filter=$2 ;;
    *)
      sed -n '2,12s/^# \{0,1\}//p' "${BASH_SOURCE[0]}" >&2
      exit 2
      ;;
  esac
  shift 2
done
if [ -n "$against" ] && [ ! -f "$against" ]; then
  echo "bench.sh: there is no \"$against\"." >&2
  exit 1
fi

"$top/scripts/install-packages.sh" bench >&2
cd "$top"
{
  cmake --preset bench
  cmake --build --preset bench
} >&2

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export QT_QPA_PLATFORM=offscreen

# Name, time in milliseconds, floor in milliseconds or "", ratio or "".
rows='
  def scale($unit): {"ns": 1e-6, "us": 1e-3, "ms": 1, "s": 1e3}[$unit];
  def counter($name): to_entries
    | map(select(.key | startswith($name + "_")))[0]
    | if . == null then null else .value * scale(.key | ltrimstr($name + "_")) end;
  .benchmarks[] | select(.run_type != "aggregate")
  | . as $row
  | ($row | counter("work")) as $work
  | [ (.name | sub("/(manual_time|iterations:[0-9]+)"; ""; "g")),
      ($work // (.real_time * scale(.time_unit))),
      (($row | counter("floor")) // ""), (.ratio // "") ]
  | @tsv'
for program in build/bench/bin/*_bench; do
  name=$(basename "$program" _bench)
  echo "bench.sh: $name" >&2
  "$program" --benchmark_filter="$filter" --benchmark_format=json >"$work/out.json" 2>"$work/out.err" ||
    cat "$work/out.err" >&2
  # A program of which no row matches writes nothing.
  [ ! -s "$work/out.json" ] || jq -r "$rows" "$work/out.json" | sed "s|^|$name/|" >>"$work/rows"
done
if [ ! -s "$work/rows" ]; then
  echo "bench.sh: no row matches \"$filter\"." >&2
  exit 1
fi
[ -z "$save" ] || cp "$work/rows" "$save"

awk -F '\t' -v against="$against" '
  function number(x) { return x == "" ? "" : sprintf(x >= 100 ? "%.0f" : x >= 1 ? "%.2f" : "%.3g", x) }
  BEGIN {
    if (against != "")
      while ((getline line < against) > 0) {
        split(line, was, "\t")
        before[was[1]] = was[4] == "" ? was[2] : was[4]
      }
    compares = against != ""
    print "| row | ms | floor ms | ratio |" (compares ? " before | now / before |" : "")
    print "|---|--:|--:|--:|" (compares ? "--:|--:|" : "")
  }
  {
    line = "| " $1 " | " number($2) " | " number($3) " | " number($4) " |"
    if (compares) {
      now = $4 == "" ? $2 : $4
      old = before[$1]
      change = old > 0 ? now / old : ""
      mark = change != "" && change > 1.1 ? " **loss**" : ""
      line = line " " number(old) " | " number(change) mark " |"
    }
    print line
  }' "$work/rows"
