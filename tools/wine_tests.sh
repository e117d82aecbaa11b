# Sourced by test.sh after wine_env.sh and wine_window.sh: two prefixes of Wine, each with a screen of its own, so
# that two programs with windows run beside each other without taking each other's keys. Gives:
#   wine_tests_prefixes   makes them and starts their screens
#   wine_tests_run PROGRAM ARGS...  runs a program in the prefix of `slot`, 1 or 2
#   wine_tests_stop       ends their servers and screens

wine_tests_folder=$wine_root/build
wine_tests_displays=()
wine_tests_screens=

wine_tests_prefix() { echo "$wine_tests_folder/wineprefix$([ "$1" = 1 ] || echo "-$1")"; }

# Drive W: is an empty volume of mkntfs, which has no journal and no driver.
wine_tests_volume() {
  truncate -s 16M build/wine-volume.img
  PATH=$PATH:/usr/sbin mkntfs -q -F -Q -s 512 -c 4096 -p 0 -H 0 -S 0 -L raw build/wine-volume.img
  wine_raw_image w "$wine_root/build/wine-volume.img"
}

# Of nobody else: no clicks from outside, and a known size.
wine_tests_screen() {
  unset DISPLAY
  wine_display || return 1
  wine_tests_displays[$1]=$DISPLAY
  wine_tests_screens="$wine_tests_screens $wine_display_pids"
}

wine_tests_prefixes() {
  local -x WINEPREFIX
  local second
  second=$(wine_tests_prefix 2)
  wine_tests_stop
  wine_tests_screen 2 && wine_tests_screen 1 || return 1
  WINEPREFIX=$(wine_tests_prefix 1)
  wine_fonts && wine_tests_volume || return 1
  timeout 60 wineserver -w
  if [ ! -e "$second/.fonts" ]; then
    rm -rf "$second" "$second.new"
    cp -a "$WINEPREFIX" "$second.new" && mv "$second.new" "$second" || return 1
  fi
  WINEPREFIX=$second wine_tests_volume
}

wine_tests_run() {
  local -x WINEPREFIX DISPLAY=${wine_tests_displays[$slot]}
  # A test puts a stand-in in the place of this tool, which Wine takes only then.
  local -x WINEDLLOVERRIDES="$WINEDLLOVERRIDES;schtasks.exe=n"
  # The window's tests take four minutes where nothing else runs, and several times as long on a busy machine.
  local -x WINE_TIMEOUT=${WINE_TIMEOUT:-1800}
  WINEPREFIX=$(wine_tests_prefix "$slot")
  wine_run "$@"
}

wine_tests_stop() {
  local prefix
  for prefix in "$(wine_tests_prefix 1)" "$(wine_tests_prefix 2)"; do
    [ ! -d "$prefix" ] || WINEPREFIX=$prefix wine_stop
  done
  # shellcheck disable=SC2086
  [ -z "$wine_tests_screens" ] || kill $wine_tests_screens 2>/dev/null
  wine_tests_screens=
  return 0
}
