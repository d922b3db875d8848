#!/usr/bin/env bash
# Builds Qt for Windows from the distribution's own source, once, into a cache outside the checkout,
# and prints the folder where it is; what it does meanwhile goes to the standard error.
#
#   scripts/windows-qt.sh [--look]     --look: builds nothing, and fails if there is none yet
#
# RWS_CACHE names another cache than ~/.cache/rws-edit. It holds one folder for each version of Qt and
# set of options; which is wanted follows from the tools of Qt installed here, which must fit.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
top=$PWD

say() { echo "windows-qt: $*" >&2; }

# Only qtbase: icons come as pictures, and sound is the system's. Left out is what the program never
# asks for, and what the distribution took out of the source (the headers for tablets). Direct2D
# stays, since the fonts do not link without it. What others would be libraries of the system is
# built in, so that a program is one file.
qtbase_options=(
  -DCMAKE_BUILD_TYPE=Release
  -DBUILD_SHARED_LIBS=OFF
  -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF
  -DQT_BUILD_TOOLS_WHEN_CROSSCOMPILING=OFF
  -DFEATURE_direct2d=ON -DFEATURE_direct2d1_1=ON
  -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_opengl=OFF -DINPUT_opengl=no -DFEATURE_vulkan=OFF
  -DFEATURE_icu=OFF -DFEATURE_glib=OFF -DFEATURE_zstd=OFF -DFEATURE_tabletevent=OFF
  -DFEATURE_tuiotouch=OFF -DFEATURE_androiddeployqt=OFF -DFEATURE_printsupport=OFF
  -DFEATURE_concurrent=OFF -DFEATURE_xml=OFF -DFEATURE_openssl=OFF -DFEATURE_schannel=ON
  -DFEATURE_system_zlib=OFF -DFEATURE_system_png=OFF -DFEATURE_system_jpeg=OFF
  -DFEATURE_system_freetype=OFF -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_pcre2=OFF
  -DFEATURE_system_doubleconversion=OFF
)
toolchain=$top/cmake/mingw-w64.cmake

version_of() { dpkg-query -W -f='${source:Version}' "$1" 2>/dev/null; }
if ! base_version=$(version_of qt6-base-dev-tools); then
  say "the tools of Qt are not installed here; scripts/install-packages.sh does it"
  exit 1
fi

cache=${RWS_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/rws-edit}
key=$(cat - "$toolchain" <<<"${qtbase_options[*]}" | sha256sum | cut -c1-12)
place=$cache/qt-windows-${base_version//[^0-9A-Za-z.+-]/_}-$key
if [ -f "$place/complete" ]; then
  echo "$place"
  exit 0
fi
if [ "${1:-}" = --look ]; then
  say "there is no Qt for Windows in $place"
  exit 1
fi

scripts/install-packages.sh windows-qt >&2
mkdir -p "$cache"
# One build at a time; who waited finds the other's.
exec 9>"$cache/qt-windows.lock"
if ! flock -n 9; then
  say "another build of Qt is under way; waiting for it"
  flock 9
fi
if [ -f "$place/complete" ]; then
  echo "$place"
  exit 0
fi

started=$SECONDS
work=$place.work
rm -rf "$work" "$place"
mkdir -p "$work/lists/partial" "$work/sources.d" "$work/source"
log=$work/log
say "building Qt $base_version for Windows in $work: about 20 minutes on two cores, 3 GB"

# The source of the very packages whose tools are installed, by a list of sources of its own: the
# system's stays as it is.
for list in /etc/apt/sources.list.d/*.sources; do
  if [ -f "$list" ]; then
    sed 's/^Types:.*/Types: deb-src/' "$list" >"$work/sources.d/$(basename "$list")"
  fi
done
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
  if [ -f "$list" ]; then
    sed -n 's/^deb\(\s\)/deb-src\1/p' "$list" >>"$work/sources.d/all.list"
  fi
done
apt_options=(
  -o "Dir::Etc::SourceList=/dev/null" -o "Dir::Etc::SourceParts=$work/sources.d"
  -o "Dir::State::Lists=$work/lists" -o "Dir::Cache=$work"
  -o "APT::Sandbox::User="
)

fail() {
  say "$1; the last lines of $log:"
  tail -n 30 "$log" >&2
  exit 1
}
# A list that cannot be reached is no fault as long as the source is found in another.
apt-get "${apt_options[@]}" update >>"$log" 2>&1 || say "not every list of sources could be read"
fetch() {
  (cd "$work/source" &&
    apt-get "${apt_options[@]}" source --download-only "$1=$2" &&
    dpkg-source --no-check -x "$1"_*.dsc "$1") >>"$log" 2>&1 ||
    fail "the source of $1 $2 could not be fetched"
}
fetch qt6-base "$base_version"
say "the source is there ($((SECONDS - started)) s)"

# run NAME COMMAND...: every fifth part of a hundred is told, all goes to the log.
run() {
  local name=$1
  shift
  NINJA_STATUS="[%f/%t] " "$@" </dev/null 2>&1 | tee -a "$log" |
    awk -v name="$name" -v begun="$started" '
      match($0, /^\[[0-9]+\/[0-9]+\]/) {
        split(substr($0, 2, RLENGTH - 2), n, "/")
        part = int(n[1] * 20 / n[2])
        if (part > told) { told = part; printf "windows-qt: %s %d %%\n", name, part * 5; fflush() }
      }' >&2
  # The status of the command itself, not of those behind it.
  [ "${PIPESTATUS[0]}" -eq 0 ] || fail "$name failed"
}

host_cmake=/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH)/cmake
run "configuring qtbase" cmake -G Ninja -S "$work/source/qt6-base" -B "$work/qtbase" \
  -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_INSTALL_PREFIX="$place" \
  -DQT_HOST_PATH=/usr -DQT_HOST_PATH_CMAKE_DIR="$host_cmake" "${qtbase_options[@]}"
run "building qtbase" cmake --build "$work/qtbase"
run "installing qtbase" cmake --install "$work/qtbase"

# What must lie beside a program that holds Qt.
mkdir -p "$place/licences"
cp "$work/source/qt6-base/LICENSES/LGPL-3.0-only.txt" "$work/source/qt6-base/LICENSES/GPL-3.0-only.txt" \
  "$place/licences/"
cp "$work/source/qt6-base/debian/copyright" "$place/licences/qtbase-copyright.txt"
echo "qt6-base $base_version" >"$place/licences/qtbase-version.txt"
cp scripts/windows-qt.sh "$place/licences/qtbase-recipe.sh"

touch "$place/complete"
rm -rf "$work"
say "done in $(((SECONDS - started) / 60)) min $(((SECONDS - started) % 60)) s"
echo "$place"
