# Sourced by test.sh: steps that print their times, test programs run two at a time, and the sum at the end.
#   must NAME COMMAND...         a step without which nothing further makes sense; says why and ends where it fails
#   step NAME                    a heading for what run_suites and run_scripts_tests do next
#   add_suite NAME PARTS COMMAND...   puts a GoogleTest program in line, cut into that many parts
#   add_fuzz_target PROGRAM      puts a fuzz target in line
#   end_workers                  for a trap at the script's end
#   run_suites                   runs what stands in line, two at a time, and prints what each said
#   run_check NAME COMMAND...    counts a command that looks at what was built as one test
#   run_scripts_tests            the tests of tools and benchmarks in tests/tools
#   summarise                    "N passed, N failed" as the last line; the script's exit code
# Reads `filter` and `part`. A command in line finds in `slot` which of the two it is: 1 or 2.

passed=0
failed=0
started=$SECONDS
logs=$PWD/build/test-logs
mkdir -p "$logs"
line=$(mktemp -d "$logs/line.XXXXXX")
workers=

seconds_of() { awk '{ printf "%.1f s, CPU %.1f s", $1, $2 + $3 }' "$1"; }

# Runs a command with its output in a file and its times in another.
timed() {
  local log=$1 times=$2 code=0 TIMEFORMAT='%R %U %S'
  shift 2
  { time "$@" >"$log" 2>&1 </dev/null || code=$?; } 2>"$times"
  return $code
}

must() {
  local name=$1 code=0
  shift
  timed "$logs/step.log" "$logs/step.times" "$@" || code=$?
  echo "== $name: $(seconds_of "$logs/step.times")"
  [ "$code" = 0 ] && return
  tail -n 60 "$logs/step.log"
  failed=$((failed + 1))
  echo "FAILED: $name"
  summarise
  exit 1
}

step() { echo "== $1"; }

# A bare word means any test that holds it.
gtest_pattern() {
  case $filter in
    "") [ "$1" = threads ] && echo '*Concurrency*' || echo '*' ;;
    *[*:?-]*) echo "$filter" ;;
    *) echo "*$filter*" ;;
  esac
}

jobs_in_line=0
add_job() {
  jobs_in_line=$((jobs_in_line + 1))
  printf '%q ' "$@" >"$line/$jobs_in_line.job"
}

add_suite() {
  local name=$1 parts=$2 i
  shift 2
  for ((i = 0; i < parts; i++)); do
    add_job run_suite "$name$([ "$parts" = 1 ] || echo ".$((i + 1))")" "$i" "$parts" "$@"
  done
}

run_suite() {
  local name=$1 index=$2 parts=$3
  shift 3
  local -x GTEST_SHARD_INDEX=$index GTEST_TOTAL_SHARDS=$parts
  local log=$logs/$name.log code=0 ok bad
  timed "$log" "$log.times" "$@" "--gtest_filter=$(gtest_pattern "${name%%-*}")" || code=$?
  # Wine writes CR LF.
  ok=$(tr -d '\r' <"$log" | sed -n 's/^\[  PASSED  \] \([0-9]*\) test.*/\1/p' | tail -n 1)
  bad=$(tr -d '\r' <"$log" | sed -n 's/^\[  FAILED  \] \([0-9]*\) test.*/\1/p' | tail -n 1)
  bad=${bad:-0}
  # One that crashes, never comes to its end, or ran no test although none was chosen by name, has failed.
  if [ "$bad" = 0 ] && { [ "$code" != 0 ] || [ -z "$ok" ] || { [ "$ok" = 0 ] && [ -z "$filter" ]; }; }; then bad=1; fi
  ok=${ok:-0}
  echo "$ok $bad"
  [ "$ok$bad" = 00 ] || echo "   $name: $ok passed, $bad failed ($(seconds_of "$log.times"))"
  [ "$bad" = 0 ] && return
  grep -aE -A 30 'Failure|ERROR: AddressSanitizer|WARNING: ThreadSanitizer|runtime error|terminate' "$log" | head -n 80
  tail -n 15 "$log"
}

add_fuzz_target() { add_job run_fuzz_target "$1"; }

run_fuzz_target() {
  local target=$1 name log
  name=$(basename "$target")
  log=$logs/$name.log
  local corpus="build/fuzz-corpus/$name" seeds="fuzz/corpus/$name"
  mkdir -p "$corpus"
  [ -d "$seeds" ] || seeds=
  case $name in
    ntfs_volume_fuzz | mft_facts_fuzz | volume_build_fuzz) tools/ntfs_seeds.sh "$corpus" ;;
  esac
  # shellcheck disable=SC2086
  if timed "$log" "$log.times" "$target" -max_total_time=2 -timeout=20 -rss_limit_mb=2048 -print_final_stats=1 \
    "-artifact_prefix=$logs/" "$corpus" $seeds; then
    echo "1 0"
    echo "   $name: $(sed -n 's/stat::number_of_executed_units: *//p' "$log") inputs"
  else
    echo "0 1"
    tail -n 40 "$log"
    echo "FAILED: $name"
  fi
}

# Takes jobs from the line until none is left. A folder is made by one taker alone.
work_off_line() {
  local slot=$1 job
  for ((job = 1; job <= jobs_in_line; job++)); do
    mkdir "$line/$job.taken" 2>/dev/null || continue
    eval "$(cat "$line/$job.job")" >"$line/$job.said"
  done
}

run_suites() {
  local job ok bad
  work_off_line 1 &
  workers=$!
  work_off_line 2 &
  workers="$workers $!"
  # shellcheck disable=SC2086
  wait $workers
  workers=
  for ((job = 1; job <= jobs_in_line; job++)); do
    read -r ok bad <"$line/$job.said" || { ok=0 bad=1; }
    passed=$((passed + ok))
    failed=$((failed + bad))
    tail -n +2 "$line/$job.said"
  done
  rm -rf "${line:?}"/*
  jobs_in_line=0
}

# For the end of the script, whatever ends it: nobody goes on with the line.
end_workers() {
  local worker running
  for worker in $workers; do
    running=$(pgrep -P "$worker")
    # shellcheck disable=SC2086
    kill "$worker" $running 2>/dev/null
  done
  rm -rf "$line"
}

run_check() {
  local name=$1 log=$logs/check.log
  shift
  if timed "$log" "$log.times" "$@"; then
    passed=$((passed + 1))
    echo "   $name: $(tail -n 1 "$log") ($(seconds_of "$log.times"))"
  else
    failed=$((failed + 1))
    tail -n 60 "$log"
    echo "FAILED: $name"
  fi
}

run_scripts_tests() {
  local log=$logs/scripts.log ran
  if timed "$log" "$log.times" python3 -m unittest discover -v -s tests/tools -p '*_test.py'; then
    ran=$(sed -n 's/^Ran \([0-9]*\) test.*/\1/p' "$log")
    passed=$((passed + ran))
    [ "$ran" != 0 ] || failed=$((failed + 1))
    echo "   scripts: $ran passed, 0 failed ($(seconds_of "$log.times"))"
  else
    failed=$((failed + 1))
    tail -n 40 "$log"
    echo "FAILED: scripts"
  fi
}

summarise() {
  local cpu
  times >"$logs/all.times"  # not in a pipe, whose shell has none
  cpu=$(tail -n 1 "$logs/all.times" | awk '{ split($1, u, /[ms]/); split($2, s, /[ms]/); print u[1] * 60 + u[2] + s[1] * 60 + s[2] }')
  echo "$((SECONDS - started)) s in all, CPU $cpu s"
  if [ "$passed" = 0 ] && [ "$failed" = 0 ]; then
    echo "no test is called '$filter'"
    failed=1
  fi
  echo "$passed passed, $failed failed"
  [ "$failed" = 0 ]
}
