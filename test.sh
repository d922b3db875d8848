#!/usr/bin/env bash
# Builds the program with warnings as errors and runs all tests.
#
#   ./test.sh [ctest arguments]     for example: ./test.sh -R Reader
#
# No display is needed: the forms are tested on Qt's offscreen platform.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"

scripts/install-packages.sh test
cmake --preset dev
cmake --build --preset dev
ctest --preset dev -j "$(nproc)" --no-tests=error "$@"
