#!/usr/bin/env bash
# Builds what needs no Qt for Windows, and runs its tests under Wine in a prefix of their own.
#
#   scripts/test-windows.sh [GoogleTest arguments]     for example: --gtest_filter='Reader*'
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install-packages.sh windows
cmake --preset windows-core
cmake --build --preset windows-core

export WINEPREFIX=$PWD/build/windows-core/wine
export WINEDEBUG=-all
# No offer to install what only programs of .NET and web pages need.
export WINEDLLOVERRIDES="mscoree,mshtml="
mkdir -p "$WINEPREFIX"
end_wine() {
  wineserver -k || true
  wineserver -w || true
}
trap end_wine EXIT
wineboot --init

wine build/windows-core/bin/core_tests.exe "$@"
