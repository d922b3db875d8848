#!/usr/bin/env bash
# Builds what needs no Qt for Windows, and runs its tests under Wine in a prefix of their own.
#
#   scripts/test-windows.sh [GoogleTest arguments]     for example: --gtest_filter='Reader*'
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

scripts/install-packages.sh windows
cmake --preset windows-core
cmake --build --preset windows-core

source scripts/wine-prefix.sh
start_wine "$PWD/build/windows-core/wine"
wine build/windows-core/bin/core_tests.exe "$@"
