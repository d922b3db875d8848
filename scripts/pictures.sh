#!/usr/bin/env bash
# Makes the pictures of all windows that the documentation shows.
#
#   scripts/pictures.sh [folder]        docs/ without a folder
#
# Works on a copy of the samples and needs no display.
set -euo pipefail

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
out=${1:-$top/docs}
mkdir -p "$out"
out=$(cd "$out" && pwd)

cd "$top"
cmake --preset release >/dev/null
cmake --build --preset release --target rws-picture

work=$(mktemp -d)
# The window shows the path of its missions; this one says nothing about the machine.
game="/tmp/IL-2 1946"
trap 'rm -rf "$work" "$game"' EXIT
if [ -e "$game" ]; then
  echo "pictures.sh: \"$game\" is in the way." >&2
  exit 1
fi
cp -R samples "$game"

export RWS_GAME_PATH="$game/game" RWS_SETTINGS_FILE="$work/settings.ini" QT_QPA_PLATFORM=offscreen
picture=build/release/bin/rws-picture
"$picture" "$out/window.png" "$game/single_bridge_patrol.mis"
"$picture" --dark "$out/dark.png" "$game/single_bridge_patrol.mis"
form() { "$picture" --form "$1" "$out/$1.png" "$game/$2.mis"; }
for name in frmChgAC frmSkins frmView frmWP frmWPEdit frmPrefs frmCam; do
  form "$name" single_bridge_patrol
done
form frmBrief coop_winter_escort
form frmMap coop_winter_escort
form frmDogFight dogfight_home_bases
form frmStatic parked_aircraft
