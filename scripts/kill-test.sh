#!/usr/bin/env bash
# Kills the program while it works, and looks each time that no mission, no briefing and no edit
# that was kept is lost.
#
#   scripts/kill-test.sh [TIMES]             500 if not told otherwise
#   scripts/kill-test.sh --seed SEED [TIMES] much the same as in an earlier run
#   scripts/kill-test.sh --writers [TIMES]   two programs write one mission, 10,000 times in all
#
# The program, with its window, works by chance on copies of samples/ in a folder of its own. At
# the first thing that is wrong the seed is told and the folder stays.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

usage() {
  sed -n '5,7s/^# *//p' "$0" >&2
  exit 2
}
count() { [[ "$1" =~ ^[0-9]+$ ]] || usage; }

writers=no seed=$((RANDOM * 32768 + RANDOM))
case "${1:-}" in
  --writers) writers=yes; shift ;;
  --seed) seed=${2:-}; count "$seed"; shift 2 ;;
esac
[ $# -le 1 ] || usage
times=${1:-$([ "$writers" = yes ] && echo 10000 || echo 500)}
count "$times"

scripts/install-packages.sh test
cmake --preset dev
if [ "$writers" = yes ]; then
  cmake --build --preset dev --target kill_tests
  RWS_WRITES=$times exec build/dev/bin/kill_tests --gtest_filter='TwoWriters.*'
fi
cmake --build --preset dev --target driven_program

top=$PWD
place=${TMPDIR:-/tmp}
if [ -w /dev/shm ]; then place=/dev/shm; fi
folder=$(mktemp -d "$place/rws-kill.XXXXXX")
mkdir "$folder/missions" "$folder/program" "$folder/home"
chmod 700 "$folder/home"
cp -R samples/game "$folder/game"
for copy in 1 2; do
  for mission in samples/*.mis; do
    name=$(basename "$mission" .mis)
    end='\r\n'
    if [ "$name" = bare_line_feeds ]; then end='\n'; fi
    cp "$mission" "$folder/missions/$name-$copy.mis"
    printf "[KillTest]$end  $name-$copy$end" >> "$folder/missions/$name-$copy.mis"
    briefing=samples/$name.properties
    if [ -f "$briefing" ]; then
      cp "$briefing" "$folder/missions/$name-$copy.properties"
      printf ' %s' "$copy" >> "$folder/missions/$name-$copy.properties"
    fi
  done
done

export QT_QPA_PLATFORM=offscreen LC_ALL=C.UTF-8 HOME=$folder/home RWS_GAME_PATH=$folder/game
export RWS_SETTINGS_FILE=$folder/settings.ini XDG_RUNTIME_DIR=$folder/home
driven=$top/build/dev/bin/driven_program

fail() {
  trap - EXIT
  echo "kill-test.sh: $1" >&2
  echo "Seed $seed, kill $kill; all is left in $folder" >&2
  exit 1
}
tidy() { rm -rf "$folder"; }
trap tidy EXIT

RANDOM=$((seed % 32768))
kill=0 starting=0
totals=(0 0 0 0)
"$driven" "$folder" begin
began=$SECONDS
for ((kill = 1; kill <= times; ++kill)); do
  "$driven" "$folder" $((seed + kill)) > "$folder/said" 2> "$folder/errors" &
  process=$!
  # Most are killed at work; one of ten while it starts.
  if [ $((RANDOM % 10)) -eq 0 ]; then
    starting=$((starting + 1))
  else
    until [ -s "$folder/said" ]; do
      kill -0 "$process" 2> /dev/null || fail "the program has ended by itself"
      sleep 0.01
    done
  fi
  sleep "0.$(printf %03d $((RANDOM % 500)))"
  kill -KILL "$process" 2> /dev/null || fail "the program has ended by itself"
  wait "$process" 2> /dev/null || true
  found=$("$driven" "$folder" check) || fail "$found"
  read -r -a numbers <<< "${found#found }"
  for i in 0 1 2 3; do totals[i]=$((totals[i] + numbers[i])); done
  if [ $((kill % 50)) -eq 0 ]; then echo "$kill of $times, $((SECONDS - began)) s"; fi
done

printf '%-52s %6d\n' "Kills (seed $seed)" "$times" "of them while the program started" "$starting" \
  "Missions given back from an Update's copy" "${totals[0]}" \
  "Files given the name that a rename had not finished" "${totals[1]}" \
  "Missions whose edits had been kept" "${totals[2]}" \
  "Missions whose edits were offered" "${totals[3]}" \
  "Missions or briefings lost, torn or doubled" 0 "Kept edits that were not offered" 0 \
  "Seconds" $((SECONDS - began))
