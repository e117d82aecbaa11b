#!/usr/bin/env bash
# Builds and tests everything. usage: ./test.sh [--quick]     --quick: only the native tests
# Ends with one line "N passed, N failed".
set -uo pipefail
cd "$(dirname "$0")"

quick=
case ${1:-} in
  "") ;;
  --quick) quick=1 ;;
  *) echo "usage: ./test.sh [--quick]" >&2; exit 2 ;;
esac

# A second checkout finds in the cache what the first has compiled.
export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1

passed=0
failed=0
layers="platform config index search shell cli"
logs=build/test-logs
mkdir -p "$logs"

fail() {
  echo "FAILED: $1"
  failed=$((failed + 1))
}

# A step without which nothing further makes sense.
must() {
  local name=$1
  shift
  echo "== $name"
  if "$@" >"$logs/step.log" 2>&1; then return; fi
  tail -n 60 "$logs/step.log"
  fail "$name"
  echo "$passed passed, $failed failed"
  exit 1
}

# Runs a GoogleTest program and adds up what it says. One that crashes, or ran no test, counts as a failure.
run_suite() {
  local name=$1
  shift
  local log="$logs/$name.log" code=0 ok bad
  "$@" >"$log" 2>&1 </dev/null || code=$?
  # Wine writes CR LF.
  ok=$(tr -d '\r' <"$log" | sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' | tail -n 1)
  bad=$(tr -d '\r' <"$log" | sed -n 's/^\[  FAILED  \] \([0-9]*\) test.*/\1/p' | tail -n 1)
  ok=${ok:-0}
  bad=${bad:-0}
  if [ "$bad" = 0 ] && { [ "$code" != 0 ] || [ "$ok" = 0 ]; }; then bad=1; fi
  passed=$((passed + ok))
  failed=$((failed + bad))
  echo "   $name: $ok passed, $bad failed"
  [ "$bad" = 0 ] && return
  grep -aE -A 30 'Failure|ERROR: AddressSanitizer|WARNING: ThreadSanitizer|runtime error|terminate' "$log" | head -n 80
  tail -n 15 "$log"
}

# Drive W: of the prefix: an empty volume of mkntfs, which has no journal and no driver.
make_wine_image() {
  wine_stop
  truncate -s 16M build/wine-volume.img
  PATH=$PATH:/usr/sbin mkntfs -q -F -Q -s 512 -c 4096 -p 0 -H 0 -S 0 -L raw build/wine-volume.img
  wine_raw_image w "$PWD/build/wine-volume.img"
}

must "packages" tools/install_packages.sh build windows window tests

must "linux-debug: configure" cmake --preset linux-debug
must "linux-debug: build" cmake --build build/linux-debug
echo "== native, AddressSanitizer and UndefinedBehaviorSanitizer"
for layer in $layers; do
  run_suite "native-$layer" "build/linux-debug/${layer}_tests"
done

if [ -z "$quick" ]; then
  must "linux-tsan: configure" cmake --preset linux-tsan
  must "linux-tsan: build" cmake --build build/linux-tsan --target platform_tests index_tests search_tests
  echo "== threads, ThreadSanitizer"
  for layer in platform index search; do
    run_suite "threads-$layer" "build/linux-tsan/${layer}_tests" '--gtest_filter=*Concurrency*'
  done

  must "windows: configure" cmake --preset windows
  must "windows: build" cmake --build build/windows
  echo "== Windows programs, under Wine"
  # shellcheck source=tools/wine_env.sh
  source tools/wine_env.sh
  # shellcheck source=tools/wine_window.sh
  source tools/wine_window.sh
  trap 'wine_stop; wine_display_stop' EXIT
  unset DISPLAY  # a screen of its own: nobody's clicks, and a known size
  wine_stop
  must "a screen for Wine" wine_display
  must "fonts for Wine" wine_fonts
  must "an NTFS image for Wine" make_wine_image
  for layer in $layers window; do
    run_suite "windows-$layer" wine_run "build/windows/${layer}_tests.exe"
  done
  must "a contact sheet" tools/contact_sheet.sh
  wine_stop
  wine_display_stop

  must "linux-fuzz: configure" cmake --preset linux-fuzz
  must "linux-fuzz: build" cmake --build build/linux-fuzz
  echo "== fuzz targets, a few seconds each"
  for target in build/linux-fuzz/fuzz/*; do
    name=$(basename "$target")
    corpus="build/fuzz-corpus/$name"
    seeds="fuzz/corpus/$name"
    mkdir -p "$corpus"
    [ -d "$seeds" ] || seeds=
    [ "$name" = ntfs_volume_fuzz ] && tools/ntfs_seeds.sh "$corpus"
    if "$target" -max_total_time=5 -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$logs/" "$corpus" \
      ${seeds:+"$seeds"} >"$logs/$name.log" 2>&1; then
      passed=$((passed + 1))
      echo "   $name: $(sed -n 's/stat::number_of_executed_units: *//p' "$logs/$name.log") inputs"
    else
      tail -n 40 "$logs/$name.log"
      fail "$name"
    fi
  done
fi

echo "$passed passed, $failed failed"
[ "$failed" = 0 ]
