#!/usr/bin/env bash
# A user who acts by chance at the real window, under the sanitizers, and looks at it after each action.
#
#   scripts/robot.sh [--seconds N | --actions N] [--seed S] [--length N] [--shrink N]
#   scripts/robot.sh --replay SEED NUMBER... [told]
#
#   --seconds N   plays for so long, --actions N so many; 20000 actions without either
#   --seed S      the first episode's; 1
#   --length N    actions of an episode; 200
#   --shrink N    seconds in which an episode that ends in a fault is made shorter; 120
#   --replay ...  plays the actions again that were printed for such an episode; "told" says what each does
set -euo pipefail
export LC_ALL=C.UTF-8

top=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$top"
{
  cmake --preset asan
  cmake --build --preset asan --target robot
} >&2
[ $# -gt 0 ] || set -- --actions 20000
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1"
export ASAN_OPTIONS="detect_leaks=1"
export LSAN_OPTIONS="suppressions=$top/tests/lsan.supp:print_suppressions=0"
exec build/asan/bin/robot "$@"
