#!/usr/bin/env bash
# Builds RWS Edit and starts it.
#
#   ./run.sh [directory]
#
# Without a directory it opens build/samples, a copy of samples/ made on first use, with the sample
# game directory and settings of its own: neither your settings nor the samples themselves change.
set -euo pipefail

if [ $# -gt 1 ]; then
  echo "Usage: $0 [directory of missions]" >&2
  exit 2
fi
top=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)

directory=
if [ $# -eq 1 ]; then
  if [ ! -d "$1" ]; then
    echo "run.sh: no such directory: $1" >&2
    exit 2
  fi
  directory=$(cd -- "$1" && pwd)
fi

display=yes
if [ -z "${DISPLAY:-}" ] && [ -z "${WAYLAND_DISPLAY:-}" ]; then display=no; fi

groups=()
if [ "$display" = no ]; then groups+=(picture); fi
if [ -n "${WAYLAND_DISPLAY:-}" ]; then groups+=(desktop); fi

cd "$top"
scripts/install-packages.sh "${groups[@]}"
cmake --preset release
cmake --build --preset release

if [ -z "$directory" ]; then
  if [ ! -d build/samples ]; then cp -R samples build/samples; fi
  directory=$top/build/samples
  export RWS_GAME_PATH=$top/build/samples/game
  export RWS_SETTINGS_FILE=$top/build/run-settings.ini
fi

if [ "$display" = yes ]; then
  exec build/release/bin/rws-edit "$directory"
fi

echo "There is no display here, so the window is drawn on a virtual one and saved as a picture."
xvfb-run -a -s "-screen 0 1600x1200x24" \
  build/release/bin/rws-picture build/first-window.png "$directory"
echo "The picture: $top/build/first-window.png"
