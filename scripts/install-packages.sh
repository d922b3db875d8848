#!/usr/bin/env bash
# Installs the Debian packages that the build needs, if any is missing.
#
#   scripts/install-packages.sh [GROUP...]
#
# Groups add to the packages of a plain build:
#   test     what test.sh and .ci/run need
#   bench    the benchmark library
#   fuzz     what scripts/fuzz.sh needs
#   windows  what scripts/test-windows.sh needs
#   windows-qt       what scripts/windows-qt.sh needs
#   windows-program  what scripts/windows.sh needs beside "windows"
#   desktop  what the program needs to open a window under Wayland
#   picture  a virtual display, for a picture of the window on a machine without one
#   package  what scripts/package.sh needs
set -euo pipefail

packages=(
  g++ cmake ninja-build
  qt6-base-dev qt6-multimedia-dev "qt6-svg-dev|libqt6svg6-dev" libgl-dev
  nlohmann-json3-dev libcli11-dev
  fonts-dejavu-core
)
for group in "$@"; do
  case $group in
    test) packages+=(git libgtest-dev clang-format-14 xvfb xauth) ;;
    bench) packages+=(libbenchmark-dev jq) ;;
    fuzz) packages+=(clang-14 "libclang-rt-14-dev|libclang-common-14-dev" llvm-14) ;;
    windows)
      packages+=(
        g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 mingw-w64-x86-64-dev googletest
        wine wine64
      )
      ;;
    windows-qt)
      packages+=(
        g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 mingw-w64-x86-64-dev
        qt6-base-dev-tools dpkg-dev
      )
      ;;
    windows-program)
      packages+=(
        librsvg2-bin icoutils nsis unzip xvfb xauth xdotool imagemagick
      )
      ;;
    desktop) packages+=(qt6-wayland) ;;
    picture) packages+=(xvfb xauth) ;;
    package)
      packages+=(
        dpkg-dev file gzip lintian desktop-file-utils appstream shared-mime-info man-db
        libglib2.0-bin xvfb xauth x11-utils
      )
      ;;
    *)
      echo "install-packages.sh: unknown group \"$group\" (test, bench, fuzz, windows, windows-qt, windows-program, desktop, picture, package)" >&2
      exit 2
      ;;
  esac
done

if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
  echo "install-packages.sh: this system has no apt-get, so nothing is installed here." >&2
  echo "The build goes on with what there is; it needs the counterparts of these Debian packages:" >&2
  printf '  %s\n' "${packages[@]}" >&2
  exit 0
fi

installed() {
  dpkg-query -W -f='${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

# "a|b" is the same package under its name of this or of another release.
missing=()
for entry in "${packages[@]}"; do
  IFS='|' read -ra names <<<"$entry"
  found=no
  for name in "${names[@]}"; do
    if installed "$name"; then found=yes; fi
  done
  if [ "$found" = no ]; then missing+=("$entry"); fi
done
if [ ${#missing[@]} -eq 0 ]; then exit 0; fi

echo "Missing packages: ${missing[*]}"
as_root=()
if [ "$(id -u)" -ne 0 ]; then
  if ! command -v sudo >/dev/null; then
    echo "install-packages.sh: cannot install them: neither root nor sudo. As root, run:" >&2
    echo "  apt-get update && apt-get install ${missing[*]%%|*}" >&2
    exit 1
  fi
  as_root=(sudo)
fi

"${as_root[@]}" apt-get update -q
wanted=()
for entry in "${missing[@]}"; do
  IFS='|' read -ra names <<<"$entry"
  choice=${names[0]}
  for name in "${names[@]}"; do
    if apt-cache policy "$name" | grep -q 'Candidate: [^(]'; then
      choice=$name
      break
    fi
  done
  wanted+=("$choice")
done
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
  apt-get install -q -y --no-install-recommends "${wanted[@]}"
