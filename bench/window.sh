#!/usr/bin/env bash
# Times the window under Wine. usage: bench/window.sh paint|start
#   paint: one frame of the list.   start: from the program's start, beside that of a bare window.
set -euo pipefail
case ${1-} in
  paint | start) bench=$1_bench ;;
  *) sed -n '2,3s/^# //p' "$0" >&2; exit 2 ;;
esac
cd "$(dirname "$0")/.."
tools/install_packages.sh build windows window tests
mkdir -p build
log=build/$1-bench.log
{ cmake --preset windows && cmake --build build/windows --target "$bench"; } >"$log" 2>&1 ||
  { tail -n 30 "$log" >&2; exit 1; }
# shellcheck source=../tools/wine_env.sh
source tools/wine_env.sh
# shellcheck source=../tools/wine_window.sh
source tools/wine_window.sh
unset DISPLAY
trap 'wine_stop; wine_display_stop' EXIT
wine_stop
wine_display
wine_fonts
wine_run "build/windows/$bench.exe"
