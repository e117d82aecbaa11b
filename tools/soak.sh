#!/usr/bin/env bash
# Lets the window run under Wine for some minutes, searched once a second over a drive that changes all the time, and
# prints each minute what it holds: handles, GDI objects, threads, memory. Fails where they grow after the first ten.
# usage: tools/soak.sh MINUTES      at least 3; an hour is a real run
set -euo pipefail
cd "$(dirname "$0")/.."
[[ ${1:-} =~ ^[0-9]+$ ]] || { sed -n '2,4s/^# //p' "$0" >&2; exit 2; }

tools/install_packages.sh build windows window tests
cmake --preset windows >/dev/null
cmake --build build/windows --target soak >/dev/null
export WINEPREFIX=${WINEPREFIX:-$PWD/build/wineprefix-soak}
source tools/wine_env.sh
source tools/wine_window.sh
trap 'wine_stop; wine_display_stop' EXIT
unset DISPLAY
wine_display
wine_fonts
QUILMARK_SOAK_MINUTES=$1 WINE_TIMEOUT=$(($1 * 60 + 600)) wine_run build/windows/soak.exe
