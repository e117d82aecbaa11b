#!/usr/bin/env bash
# Builds Quilmark and opens its window, on Linux under Wine. usage: ./run.sh [FOLDER | NTFS-IMAGE ...]
# Each argument becomes a drive, from D: on; default: the home folder. Without a display a short tour runs on a
# virtual one and leaves its pictures in build/tour.
set -euo pipefail
start=$PWD
cd "$(dirname "$0")"

tools/install_packages.sh build windows window
echo "Building ..."
mkdir -p build
{ cmake --preset windows -DQUILMARK_TESTS=OFF -B build/windows-run &&
  cmake --build build/windows-run --target quilmark_window; } >build/run-build.log 2>&1 ||
  { tail -n 40 build/run-build.log >&2; exit 1; }

export WINEPREFIX=$PWD/build/wineprefix-run
# shellcheck source=tools/wine_env.sh
source tools/wine_env.sh
# shellcheck source=tools/wine_window.sh
source tools/wine_window.sh
trap 'wine_stop; wine_display_stop' EXIT
has_display=${DISPLAY:-}
wine_stop
wine_display
wine_make_prefix
wine_fonts

# The drives: what was asked for and Wine's own C:, nothing else.
find "$WINEPREFIX/dosdevices" -mindepth 1 ! -name 'c:' -delete
[ $# -gt 0 ] || set -- "$HOME"
letters=(d e f g h i j k l m n o p q r s t u v w x y)
for i in $(seq 0 $(($# - 1))); do
  place=$(cd "$start" && realpath -e -- "${@:i+1:1}") || exit 2
  letter=${letters[i]:?too many drives}
  if [ -d "$place" ]; then
    ln -sfn "$place" "$WINEPREFIX/dosdevices/$letter:"
  else
    wine_raw_image "$letter" "$place"
  fi
  echo "${letter^^}: $place"
done

export QUILMARK_CONFIG_DIR='C:\Quilmark-settings'
if [ -n "$has_display" ]; then
  wine_keep
  wine build/windows-run/Quilmark.exe
else
  tools/tour.sh build/windows-run/Quilmark.exe build/tour
fi
