#!/usr/bin/env bash
# Builds and tests everything, or one part of it. Ends with one line "N passed, N failed".
# usage: ./test.sh [--quick | --native | --threads | --windows | --window | --fuzz] [FILTER]
#   --quick    native tests alone      --native   the same, with the tests of the scripts
#   --threads  the concurrency tests under ThreadSanitizer
#   --windows  the engine's tests as Windows programs, under Wine
#   --window   the window, driven under Wine
#   --fuzz     each fuzz target for a few seconds
#   FILTER     a layer (platform config canvas index search content shell cli), or tests whose name holds this text, or a pattern
#              as --gtest_filter takes it; of fuzz targets, those whose name holds it
set -uo pipefail
script=$(realpath "$0")
cd "$(dirname "$script")"

part=all
case ${1:-} in
  --quick | --native | --threads | --windows | --window | --fuzz)
    part=${1#--}
    shift
    ;;
  --help) sed -n '2,10s/^# //p' "$script"; exit ;;
  -*) sed -n '2,10s/^# //p' "$script" >&2; exit 2 ;;
esac
filter=${1:-}
[ $# -le 1 ] || { sed -n '2,10s/^# //p' "$script" >&2; exit 2; }

# shellcheck source=tools/test_steps.sh
source tools/test_steps.sh

trap end_workers EXIT

has_part() { [ "$part" = all ] || [ "$part" = "$1" ]; }
layers="platform config canvas index search content shell cli"
threaded="platform index search content shell"
layer=
if [[ -n $filter && " $layers " == *" $filter "* ]]; then
  layer=$filter filter=
  layers=$layer
  [[ " $threaded " == *" $layer "* ]] && threaded=$layer || threaded=
fi

must "packages" tools/install_packages.sh build windows window tests

windows_target() {
  if [ -n "$layer" ]; then echo "${layer}_tests"; elif [ "$part" = window ]; then echo window_tests; else echo all; fi
}

# Another compiler makes CMake start anew without the values of the preset, and say no more than a warning.
configure() {
  cmake --preset "$1" 2>&1 | tee "$logs/configure.log"
  local code=${PIPESTATUS[0]}
  ! grep -q 'require your cache to be deleted' "$logs/configure.log" || { cmake --preset "$1"; code=$?; }
  return "$code"
}

build() {
  must "$1: configure" configure "$1"
  must "$1: build" cmake --build "build/$1" "${@:2}"
}

if has_part native || [ "$part" = quick ]; then
  build linux-debug --target "${layer:-all}${layer:+_tests}"
  step "native tests, AddressSanitizer and UndefinedBehaviorSanitizer"
  for each in $layers; do add_suite "native-$each" 2 "build/linux-debug/${each}_tests"; done
  run_suites
  [ -n "$filter$layer" ] || run_check "state of the process" tools/process_state.py posix build/linux-debug
fi

if has_part native && [ -z "$filter$layer" ]; then
  step "tests of the scripts"
  run_scripts_tests
fi

if has_part threads && [ -n "$threaded" ]; then
  # shellcheck disable=SC2086
  build linux-tsan --target $(printf '%s_tests ' $threaded)
  step "concurrency tests, ThreadSanitizer"
  for each in $threaded; do add_suite "threads-$each" 1 "build/linux-tsan/${each}_tests"; done
  run_suites
fi

if has_part windows || has_part window; then
  # shellcheck source=tools/wine_env.sh
  source tools/wine_env.sh
  # shellcheck source=tools/wine_window.sh
  source tools/wine_window.sh
  # shellcheck source=tools/wine_tests.sh
  source tools/wine_tests.sh
  trap 'end_workers; wine_tests_stop' EXIT
  build windows --target "$(windows_target)"
  must "two prefixes of Wine" wine_tests_prefixes
fi

if has_part windows; then
  step "the engine's tests, under Wine"
  for each in $layers; do add_suite "windows-$each" 1 wine_tests_run "build/windows/${each}_tests.exe"; done
  run_suites
  [ -n "$filter$layer" ] || run_check "state of the process" tools/process_state.py win32 build/windows
fi

if has_part window && [ -z "$layer" ]; then
  step "the window's tests, under Wine, in two prefixes beside each other"
  [ -n "$filter" ] || rm -rf build/windows/window-tests  # pictures of an earlier run are no answer
  add_suite "window" 2 wine_tests_run build/windows/window_tests.exe
  run_suites
  [ -n "$filter" ] || must "a contact sheet" tools/contact_sheet.sh
fi

if has_part windows || has_part window; then wine_tests_stop; fi

if has_part fuzz; then
  build linux-debug --target fuzz_targets
  step "fuzz targets, a few seconds each"
  for source in fuzz/${layer:-*}/*"$filter"*_fuzz.cpp; do
    [ -e "$source" ] && add_fuzz_target "build/linux-debug/fuzz/$(basename "$source" .cpp)"
  done
  run_suites
fi

summarise
