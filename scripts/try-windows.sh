#!/usr/bin/env bash
# Tries the programs for Windows under the Wine that scripts/windows.sh has started.
#
#   try-windows.sh FOLDER PICTURE        the programs in a folder; a picture of the window
#   try-windows.sh --installer SETUP     installs, looks, removes, and looks that nothing is left
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
: "${WINEPREFIX:?scripts/windows.sh starts this}"

fail() {
  echo "try-windows.sh: $*" >&2
  exit 1
}
# The path of a folder or file of this machine as programs of Windows know it.
windows_path() { winepath -w "$1" 2>/dev/null; }
# The folder %LOCALAPPDATA% of the prefix.
local_data() { winepath -u "$(wine cmd /c 'echo %LOCALAPPDATA%' 2>/dev/null | tr -d '\r')" 2>/dev/null; }
registry_has() { wine reg query "$1" >/dev/null 2>&1; }

source scripts/wine-prefix.sh
on_own_display "$0" "$@"

# start PROGRAM MISSIONS: until its window is there, shown for as long as it needs to fill itself.
start() {
  wine "$1" "$(windows_path "$2")" &
  program=$!
  local version
  version=$(sed -n 's/^project(rws-edit VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
  for ((i = 0; ; i++)); do
    if xdotool search --onlyvisible --name "RWS Edit - $version" >/dev/null 2>&1; then break; fi
    kill -0 "$program" 2>/dev/null || fail "$1 ended at its start"
    if [ "$i" -ge 600 ]; then
      import -window root build/windows/failed.png
      fail "the window of $1 did not come up; see build/windows/failed.png"
    fi
    sleep 0.1
  done
  sleep 3
}
# As the cross in its frame does.
finish() {
  wine taskkill /im rws-edit.exe >/dev/null
  for ((i = 0; i < 100; i++)); do
    kill -0 "$program" 2>/dev/null || return 0
    sleep 0.1
  done
  fail "the window does not close"
}

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp -R samples "$work/samples"
RWS_GAME_PATH=$(windows_path "$work/samples/game")
export RWS_GAME_PATH

try_folder() {
  local folder=$1 picture=$2
  wine "$folder/rws-cli.exe" show "$(windows_path "$work/samples/single_bridge_patrol.mis")" >"$work/shown"
  grep -a '"MapName":"[^"]' "$work/shown" >/dev/null || fail "rws-cli finds no table"
  start "$folder/rws-edit.exe" "$work/samples"
  import -window root "$picture"
  # A message about what is missing is a box named as the program.
  if xdotool search --onlyvisible --name '^RWS Edit$' >/dev/null 2>&1; then
    fail "rws-edit shows a message; see $picture"
  fi
  finish
  [ -s "$folder/Error.txt" ] || fail "the log is not beside the program"
  registry_has 'HKCU\Software\Hollowbyte\RWS Edit' || fail "no settings in the registry"
  echo "The window was there and closed; its picture: $picture"
}

try_installer() {
  local setup=$1 data program_folder
  data=$(local_data)
  program_folder="$data/Programs/RWS Edit"
  wine reg delete 'HKCU\Software\Hollowbyte' /f >/dev/null 2>&1 || true
  wine "$setup" /S /ASSOCIATE || fail "the installer ended with $?"
  [ -f "$program_folder/bin/rws-edit.exe" ] || fail "nothing is installed in $program_folder"
  wine reg query 'HKCU\Software\Classes\.mis' /ve | grep -a 'RWS Edit.mis' >/dev/null ||
    fail "missions are not associated"
  start "$program_folder/bin/rws-edit.exe" "$work/samples"
  finish
  [ -s "$data/rws-edit/Error.txt" ] || fail "the log is not with the user's data"
  # It ends at once: a copy of it, which can delete it, does the work.
  wine "$program_folder/uninstall.exe" /S
  for ((i = 0; i < 300; i++)); do
    [ -e "$program_folder" ] || break
    sleep 0.1
  done
  [ ! -e "$program_folder" ] || fail "the uninstaller left: $(ls -R "$program_folder")"
  sleep 2
  [ ! -e "$data/rws-edit" ] || fail "the uninstaller left: $(ls -R "$data/rws-edit")"
  local key
  for key in 'Classes\.mis' 'Classes\.properties' 'Classes\RWS Edit.mis' 'Classes\RWS Edit.properties' \
    Hollowbyte 'Microsoft\Windows\CurrentVersion\Uninstall\RWS Edit'; do
    if registry_has "HKCU\\Software\\$key"; then fail "the uninstaller left the key $key"; fi
  done
  echo "Installed, started and removed; nothing is left."
}

case "${1:-}" in
  --installer) try_installer "$2" ;;
  *) try_folder "$1" "$2" ;;
esac
