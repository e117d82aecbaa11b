#!/usr/bin/env bash
# Times the start of the desktop program under Wine beside that of a bare window. usage: bench/window_start.sh
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install_packages.sh build windows window tests
mkdir -p build
{ cmake --preset windows && cmake --build build/windows --target start_bench; } >build/start-bench.log 2>&1 ||
  { tail -n 30 build/start-bench.log >&2; exit 1; }
# shellcheck source=../tools/wine_env.sh
source tools/wine_env.sh
# shellcheck source=../tools/wine_window.sh
source tools/wine_window.sh
unset DISPLAY
trap 'wine_stop; wine_display_stop' EXIT
wine_stop
wine_display
wine_fonts
wine_run build/windows/start_bench.exe
