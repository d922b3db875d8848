# Sourced: a Wine of its own in a folder of build/, which ends with the script that asked for it.
#
#   source scripts/wine-prefix.sh; start_wine FOLDER

start_wine() {
  export WINEPREFIX=$1
  export WINEDEBUG=-all
  # No offer to install what only programs of .NET and web pages need, and no entries in the menus
  # and file types of the machine.
  export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
  mkdir -p "$WINEPREFIX"
  trap end_wine EXIT
  wineboot --init
  # The oldest that Qt runs on; some builds of Wine begin with an older one.
  wine winecfg -v win10
}

end_wine() {
  wineserver -k || true
  wineserver -w || true
}

# on_own_display SCRIPT ARGUMENT...: starts a script again on a virtual display, unless it is there.
on_own_display() {
  if [ -n "${DISPLAY:-}" ] && [ "${RWS_OWN_DISPLAY:-}" = "$DISPLAY" ]; then return; fi
  # A Wine that runs already keeps to the display that it began with, or to none.
  end_wine
  exec xvfb-run -a -s "-screen 0 1600x1200x24" \
    bash -c 'RWS_OWN_DISPLAY=$DISPLAY exec "$@"' bash "$@"
}
