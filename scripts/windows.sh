#!/usr/bin/env bash
# Builds RWS Edit for Windows, tests it under Wine, and packs it: a .zip that runs wherever it is
# unpacked, and an installer for one user.
#
#   scripts/windows.sh
#
# The first run builds Qt for Windows (scripts/windows-qt.sh), which takes its time. What comes of it
# lies in build/windows: the packages, picture.png of the window, core_tests.txt and form_tests.txt.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
top=$PWD
out=$top/build/windows

begun=$SECONDS
step() { echo && echo "== $* ($(((SECONDS - begun) / 60)) min $(((SECONDS - begun) % 60)) s) =="; }
fail() {
  echo "windows.sh: $*" >&2
  exit 1
}

scripts/install-packages.sh windows windows-program
step "Qt for Windows"
RWS_QT_WINDOWS=$(scripts/windows-qt.sh)
export RWS_QT_WINDOWS
echo "$RWS_QT_WINDOWS"

step "Build"
cmake --preset windows
cmake --build --preset windows

source scripts/wine-prefix.sh
start_wine "$out/wine"

# run_tests NAME ARGUMENT...: the summary is shown, all of it is in NAME.txt.
run_tests() {
  local name=$1 status=0
  shift
  timeout 1800 wine "$out/bin/$name.exe" "$@" >"$out/$name.txt" 2>&1 </dev/null || status=$?
  tr -d '\r' <"$out/$name.txt" | awk '
    /: Skipped$/ { getline reason }
    /^\[  SKIPPED \] .* ms\)$/ { print "not run: " $4 " (" reason ")" }
    /^\[  FAILED  \] .* ms\)$/ { print "FAILED: " $4 }
    /^\[(==========|  PASSED  )\].*/ { print }'
  [ "$status" -eq 0 ] || fail "$name ended with $status; see $out/$name.txt"
}
step "Tests of what needs no Qt, under Wine"
run_tests core_tests
step "Tests of the forms, under Wine"
run_tests form_tests

step "Packages"
version=$(sed -n 's/^project(rws-edit VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
rm -rf "$out"/package "$out"/rws-edit-*-windows*
cpack --config "$out/CPackConfig.cmake" -G ZIP -B "$out/package"
zip=$out/rws-edit-$version-windows.zip
mv "$out/package/rws-edit-$version-windows.zip" "$zip"
unzip -q "$zip" -d "$out/package/unpacked"
unpacked=$out/package/unpacked/rws-edit-$version-windows
makensis -V2 -NOCD -INPUTCHARSET UTF8 "-DVERSION=$version" "-DSTAGE=$unpacked" \
  "-DICON=$out/app/rws-edit-facts/program.ico" "-DOUT=$out/rws-edit-$version-windows-setup.exe" packaging/windows/installer.nsi
ls -l "$out"/rws-edit-*-windows* | cat

step "The window, from the unpacked .zip"
scripts/try-windows.sh "$unpacked" "$out/picture.png"
step "Installed and removed"
scripts/try-windows.sh --installer "$out/rws-edit-$version-windows-setup.exe"
step "Start, from the process to the picture of the first mission, under Wine"
scripts/time-windows.sh "$out/bin"
step "Done"
