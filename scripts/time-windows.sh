#!/usr/bin/env bash
# How long the program for Windows takes to its first mission under the Wine that scripts/windows.sh
# has started, beside a program of Qt that shows an empty window, in turn.
#
#   time-windows.sh FOLDER [RUNS]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
: "${WINEPREFIX:?scripts/windows.sh starts this}"
source scripts/wine-prefix.sh
on_own_display "$0" "$@"
folder=$1
runs=${2:-7}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -R samples "$work/samples"
to_windows() { winepath -w "$1" 2>/dev/null; }
picture=$(to_windows "$work/picture.png")
samples=$(to_windows "$work/samples")
RWS_GAME_PATH=$(to_windows "$work/samples/game")
RWS_SETTINGS_FILE=$(to_windows "$work/settings.ini")
export RWS_GAME_PATH RWS_SETTINGS_FILE

# Milliseconds that a program took.
measure() {
  local before
  before=$(date +%s%N)
  wine "$@" >/dev/null 2>&1 </dev/null || { echo "time-windows.sh: $1 failed" >&2 && exit 1; }
  echo $((($(date +%s%N) - before) / 1000000))
}
for ((i = 0; i <= runs; i++)); do
  empty=$(measure "$folder/empty_window.exe" "$picture")
  first=$(measure "$folder/rws-picture.exe" "$picture" "$samples")
  # The first of each fills the caches of the machine.
  if [ "$i" -gt 0 ]; then
    echo "$empty" >>"$work/empty"
    echo "$first" >>"$work/first"
  fi
done
median() { sort -n "$1" | sed -n "$(((runs + 1) / 2))p"; }
awk -v e="$(median "$work/empty")" -v f="$(median "$work/first")" -v n="$runs" 'BEGIN {
  printf "empty window %d ms, first mission %d ms, ratio %.2f (medians of %d)\n", e, f, f / e, n }'
