#!/usr/bin/env bash
# Tries the installed programs as the user of a display; scripts/package.sh --try starts it.
#
#   try-installed.sh SAMPLES VERSION
# No "grep -q" behind a pipe here: its early end would fail the program before it.
set -euo pipefail
samples=$1
version=$2
cd "$HOME"

fail() {
  echo "try-installed.sh: $*" >&2
  exit 1
}
same() {
  if [ "$1" != "$2" ]; then fail "$3 is \"$1\", not \"$2\""; fi
}

same "$(rws-cli --version)" "rws-cli $version" "the version"
# The name of the map is known only where the tables are found.
rws-cli show "$samples/single_bridge_patrol.mis" | grep '"MapName":"[^"]' >/dev/null ||
  fail "rws-cli show finds no table"
cp "$samples/single_bridge_patrol.mis" edited.mis
rws-cli edit edited.mis --set 'flight[*].Weapons=default' --set Time=5.5 ||
  fail "rws-cli edit cannot write"
grep 'TIME 5.5' edited.mis >/dev/null || fail "rws-cli edit changes nothing"
rm -r edited.mis .local/share/rws-edit
man -w rws-edit rws-cli >/dev/null 2>&1 || echo "Manuals are not installed on this system."

type_of() { gio info -a standard::content-type "$1" | sed -n 's/.*content-type: //p'; }
same "$(type_of "$samples/no_flights.mis")" application/x-rws-edit-mission "the type of a mission"
briefing=application/x-rws-edit-briefing
same "$(type_of "$samples/single_bridge_patrol.properties")" "$briefing" "the type of a briefing"
printf 'Name=value\nDescription=none\n' >"$HOME/other.properties"
same "$(type_of "$HOME/other.properties")" text/plain "the type of other .properties files"
for type in application/x-rws-edit-mission "$briefing"; do
  gio mime "$type" | grep rws-edit.desktop >/dev/null || fail "no program is offered for $type"
done

export RWS_GAME_PATH=$samples/game
rws-edit "$samples" &
program=$!
trap 'kill "$program" 2>/dev/null || true' EXIT
for ((i = 0; ; i++)); do
  window=$(xwininfo -name "RWS Edit - $version" 2>/dev/null || true)
  if [[ $window = *'Map State: IsViewable'* ]]; then break; fi
  kill -0 "$program" 2>/dev/null || fail "rws-edit ended at its start"
  if [ "$i" -ge 300 ]; then
    xwininfo -root -tree >&2
    fail "the window of rws-edit did not come up"
  fi
  sleep 0.1
done
# A message about what is missing, in a box named as the program, would come right after.
sleep 2
windows=$(xwininfo -root -tree)
if [[ $windows = *'"RWS Edit": ('* ]]; then fail "rws-edit shows a message: $windows"; fi
kill -TERM "$program"
status=0
wait "$program" || status=$?
same "$status" 143 "the exit code after SIGTERM"

[ -s "$HOME/.local/share/rws-edit/Error.txt" ] || fail "the log is not in the user's folder"
[ -s "$HOME/.config/Hollowbyte/RWS Edit.ini" ] || fail "the settings are not in the user's folder"
cat "$HOME/.local/share/rws-edit/Error.txt"
