#!/usr/bin/env bash
# Builds the Debian package in build/package, and checks its metadata with the tools of the system.
#
#   scripts/package.sh [--try]
#
# --try, as root: installs it, starts the installed programs as an ordinary user on a virtual
# display, removes it and looks that nothing is left. Refused when the package is installed already.
set -euo pipefail

attempt=no
case "${1:-}" in
  "") ;;
  --try) attempt=yes ;;
  *)
    echo "Usage: $0 [--try]" >&2
    exit 2
    ;;
esac
cd "$(dirname "${BASH_SOURCE[0]}")/.."

fail() {
  echo "package.sh: $*" >&2
  exit 1
}

scripts/install-packages.sh package
# A tree of its own: run.sh and the tests build without the guards of a package.
cmake --preset release -B build/package-tree -DRWS_HARDEN=ON -DCMAKE_POSITION_INDEPENDENT_CODE=ON \
  -DCMAKE_INSTALL_PREFIX=/usr
cmake --build build/package-tree

desktop-file-validate packaging/rws-edit.desktop
appstreamcli validate --no-net --strict packaging/com.hollowbyte.rws_edit.metainfo.xml
for page in packaging/*.1; do
  problems=$(LC_ALL=C.UTF-8 MANROFFSEQ='' man --warnings -E UTF-8 -l "$page" 2>&1 >/dev/null)
  if [ -n "$problems" ]; then fail "$page: $problems"; fi
done
version=$(sed -n 's/^project(rws-edit VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
grep -q "^rws-edit ($version) " packaging/changelog || fail "version $version is not in the changelog"
grep -q "<release version=\"$version\"" packaging/*.metainfo.xml ||
  fail "version $version is no release of the AppStream metadata"

rm -rf build/package
cpack --config build/package-tree/CPackConfig.cmake -G DEB -B "$PWD/build/package"
rm -rf build/package/_CPack_Packages
package=$(echo "$PWD"/build/package/rws-edit_"$version"_*.deb)
dpkg-deb --info "$package" control
dpkg-deb --contents "$package"
lintian --allow-root --fail-on error,warning "$package"
if [ "$attempt" = no ]; then exit 0; fi

if [ "$(id -u)" -ne 0 ]; then fail "--try needs root"; fi
# One try at a time: all of them install the same files.
exec 9>/run/rws-edit-try.lock
flock 9
if dpkg-query -W -f='${db:Status-Status}' rws-edit 2>/dev/null | grep -qx installed; then
  fail "--try would replace the rws-edit that is installed here"
fi

work=$(mktemp -d)
clean_up() {
  dpkg --purge rws-edit >/dev/null 2>&1 || true
  rm -rf "$work"
}
trap clean_up EXIT

DEBIAN_FRONTEND=noninteractive \
  apt-get install -q -y --no-install-recommends -o DPkg::Lock::Timeout=120 "$package" 9>&-

mkdir -p "$work/home" "$work/run"
cp -R samples "$work/samples"
cp scripts/try-installed.sh "$work/try.sh"
chmod 755 "$work"
chmod 700 "$work/run"
chown -R nobody: "$work"
find /usr/bin/rws-* /usr/share/rws-edit -printf '%p %s %T@\n' | sort >"$work/before"
setpriv --reuid=nobody --regid="$(id -g nobody)" --clear-groups \
  env -i PATH=/usr/local/bin:/usr/bin:/bin LC_ALL=C.UTF-8 HOME="$work/home" \
  XDG_RUNTIME_DIR="$work/run" TMPDIR="$work/run" \
  timeout 120 xvfb-run -a bash "$work/try.sh" "$work/samples" "$version" 9>&-
find /usr/bin/rws-* /usr/share/rws-edit -printf '%p %s %T@\n' | sort >"$work/after"
diff "$work/before" "$work/after" || fail "running the program changed its folder"

dpkg --purge rws-edit 9>&-
left=$(find /usr /etc /var/lib /var/cache -xdev -path "$PWD" -prune -o \
  \( -iname '*rws[-_]edit*' -o -name 'rws-cli*' -o -name 'RWS_*' -o -name 'RWS.*' \) -print)
if [ -n "$left" ]; then fail "left behind by the removal: $left"; fi
if grep -rqs 'rws-edit' /usr/share/mime/globs2 /usr/share/applications/mimeinfo.cache; then
  fail "the caches still know the program"
fi
echo "The package was installed, tried and removed."
