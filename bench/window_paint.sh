#!/usr/bin/env bash
# Times one frame of the list under Wine. usage: bench/window_paint.sh
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install_packages.sh build windows window tests
mkdir -p build
{ cmake --preset windows && cmake --build build/windows --target paint_bench; } >build/paint-bench.log 2>&1 ||
  { tail -n 30 build/paint-bench.log >&2; exit 1; }
# shellcheck source=../tools/wine_env.sh
source tools/wine_env.sh
# shellcheck source=../tools/wine_window.sh
source tools/wine_window.sh
unset DISPLAY
trap 'wine_stop; wine_display_stop' EXIT
wine_stop
wine_display
wine_fonts
wine_run build/windows/paint_bench.exe
