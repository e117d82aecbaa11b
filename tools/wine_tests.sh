# Sourced by test.sh after wine_env.sh and wine_window.sh: two prefixes of Wine, each with a screen of its own, so
# that two programs with windows run beside each other without taking each other's keys. Gives:
#   wine_tests_prefixes   makes them
#   wine_tests_run PROGRAM ARGS...  runs a program in the prefix of `slot`, 1 or 2
#   wine_tests_stop       ends their servers and screens

wine_tests_prefix() { echo "$wine_root/build/wineprefix$([ "$1" = 1 ] || echo "-$1")"; }

# Drive W: is an empty volume of mkntfs, which has no journal and no driver.
wine_tests_volume() {
  truncate -s 16M build/wine-volume.img
  PATH=$PATH:/usr/sbin mkntfs -q -F -Q -s 512 -c 4096 -p 0 -H 0 -S 0 -L raw build/wine-volume.img
  wine_raw_image w "$wine_root/build/wine-volume.img"
}

wine_tests_prefixes() {
  local -x WINEPREFIX
  local second
  second=$(wine_tests_prefix 2)
  wine_tests_stop
  WINEPREFIX=$(wine_tests_prefix 1)
  unset DISPLAY  # a screen of their own: nobody's clicks, and a known size
  wine_display && wine_fonts && wine_tests_volume || return 1
  timeout 60 wineserver -w
  wine_display_stop
  if [ ! -e "$second/.fonts" ]; then
    rm -rf "$second"
    cp -a "$WINEPREFIX" "$second" || return 1
  fi
  WINEPREFIX=$second wine_tests_volume
}

wine_tests_run() {
  export WINEPREFIX
  WINEPREFIX=$(wine_tests_prefix "$slot")
  if [ -z "${wine_tests_screen:-}" ]; then
    unset DISPLAY
    wine_display || return 1
    wine_tests_screen=$DISPLAY
    echo "$wine_display_pids" >"$WINEPREFIX/.screen"
  fi
  wine_run "$@"
}

wine_tests_stop() {
  local prefix screen
  for prefix in "$(wine_tests_prefix 1)" "$(wine_tests_prefix 2)"; do
    [ -d "$prefix" ] || continue
    WINEPREFIX=$prefix wine_stop
    read -r screen 2>/dev/null <"$prefix/.screen" || continue
    # shellcheck disable=SC2086
    kill $screen 2>/dev/null
    rm -f "$prefix/.screen"
  done
  return 0
}
