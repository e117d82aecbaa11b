#!/usr/bin/env bash
# Builds and tests everything, or one part of it. Ends with one line "N passed, N failed".
# usage: ./test.sh [--quick | --native | --threads | --windows | --window | --fuzz] [FILTER]
#   --quick    native tests alone      --native   the same, with the tests of the scripts
#   --threads  the concurrency tests under ThreadSanitizer
#   --windows  the engine's tests as Windows programs, under Wine
#   --window   the window, driven under Wine
#   --fuzz     each fuzz target for a few seconds
#   FILTER     tests whose name holds this text, or a pattern as --gtest_filter takes it; fuzz targets alike
set -uo pipefail
cd "$(dirname "$0")"

part=all
case ${1:-} in
  --quick | --native | --threads | --windows | --window | --fuzz)
    part=${1#--}
    shift
    ;;
  --help) sed -n '2,9s/^# //p' "$0"; exit ;;
  -*) sed -n '2,9s/^# //p' "$0" >&2; exit 2 ;;
esac
filter=${1:-}
[ $# -le 1 ] || { sed -n '2,9s/^# //p' "$0" >&2; exit 2; }

# shellcheck source=tools/test_steps.sh
source tools/test_steps.sh

has_part() { [ "$part" = all ] || [ "$part" = "$1" ]; }
layers="platform config index search shell cli"

must "packages" tools/install_packages.sh build windows window tests

build() {
  must "$1: configure" cmake --preset "$1"
  must "$1: build" cmake --build "build/$1" "${@:2}"
}

if has_part native || [ "$part" = quick ]; then
  build linux-debug
  step "native tests, AddressSanitizer and UndefinedBehaviorSanitizer"
  for layer in $layers; do add_suite "native-$layer" 2 "build/linux-debug/${layer}_tests"; done
  run_suites
fi

if has_part native; then
  step "tests of the scripts"
  run_scripts_tests
fi

if has_part threads; then
  build linux-tsan --target platform_tests index_tests search_tests
  step "concurrency tests, ThreadSanitizer"
  for layer in platform index search; do add_suite "threads-$layer" 1 "build/linux-tsan/${layer}_tests"; done
  run_suites
fi

if has_part windows || has_part window; then
  # shellcheck source=tools/wine_env.sh
  source tools/wine_env.sh
  # shellcheck source=tools/wine_window.sh
  source tools/wine_window.sh
  # shellcheck source=tools/wine_tests.sh
  source tools/wine_tests.sh
  trap wine_tests_stop EXIT
  build windows
  must "two prefixes of Wine" wine_tests_prefixes
fi

if has_part windows; then
  step "the engine's tests, under Wine"
  for layer in $layers; do add_suite "windows-$layer" 1 wine_tests_run "build/windows/${layer}_tests.exe"; done
  run_suites
fi

if has_part window; then
  step "the window's tests, under Wine, in two prefixes beside each other"
  add_suite "window" 2 wine_tests_run build/windows/window_tests.exe
  run_suites
  [ -n "$filter" ] || must "a contact sheet" tools/contact_sheet.sh
fi

if has_part windows || has_part window; then wine_tests_stop; fi

if has_part fuzz; then
  build linux-debug --target fuzz_targets
  step "fuzz targets, a few seconds each"
  for target in build/linux-debug/fuzz/*"$filter"*; do add_fuzz_target "$target"; done
  run_suites
fi

summarise
