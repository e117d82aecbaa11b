#!/usr/bin/env bash
# Builds the fuzz targets and runs them for a while, two at a time.
# usage: tools/fuzz_long.sh MINUTES [TARGET...]     MINUTES: of the clock, for all targets together; TARGET: such as
#                                                   query_fuzz; all without one
# What was found of interest stays in build/fuzz-corpus/TARGET for the next run; inputs that broke something are
# put into build/fuzz-findings, beside the logs. Exit code 1 where there is a finding, 2 on an error.
set -euo pipefail
cd "$(dirname "$0")/.."

usage() {
  sed -n '2,6s/^# \{0,1\}//p' "$0" >&2
  exit 2
}
complain() {
  echo "fuzz_long.sh: $1" >&2
  exit 2
}

[[ ${1:-} =~ ^[1-9][0-9]{0,4}$ ]] || usage
minutes=$1
shift

known=$(basename -s .cpp fuzz/*/*_fuzz.cpp | sort)
targets=("$@")
[ $# -gt 0 ] || mapfile -t targets <<<"$known"
for target in "${targets[@]}"; do
  grep -qx -- "$target" <<<"$known" || complain "no target '$target'; there are:"$'\n'"$known"
done

export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
mkdir -p build/fuzz-findings
log=build/fuzz-findings/build.log
{ cmake --preset linux-debug && cmake --build build/linux-debug --target "${targets[@]}"; } >"$log" 2>&1 || {
  tail -n 40 "$log" >&2
  complain "the targets do not build"
}

# Two cores; an odd one out leaves one of them idle for a while.
rounds=$(((${#targets[@]} + 1) / 2))
seconds=$((minutes * 60 / rounds))
[ "$seconds" -gt 0 ] || seconds=1
echo "${#targets[@]} targets, $seconds s each, two at a time"

# Runs one target; its log tells how it went, the file beside it the exit code.
run_one() {
  local target=$1 seconds=$2 corpus="build/fuzz-corpus/$1" seeds="fuzz/corpus/$1" code=0
  mkdir -p "$corpus"
  case $target in
    ntfs_volume_fuzz | mft_facts_fuzz | volume_build_fuzz) tools/ntfs_seeds.sh "$corpus" ;;
  esac
  "build/linux-debug/fuzz/$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -print_final_stats=1 \
    -artifact_prefix="build/fuzz-findings/$target-" "$corpus" ${seeds:+"$seeds"} \
    >"build/fuzz-findings/$target.log" 2>&1 </dev/null || code=$?
  echo "$code" >"build/fuzz-findings/$target.code"
}
export -f run_one
printf '%s\n' "${targets[@]}" | xargs -P 2 -I '{}' bash -euc 'run_one {} '"$seconds"

found=0
printf '%-26s %12s %8s %8s %8s  %s\n' target inputs edges features corpus finding
for target in "${targets[@]}"; do
  log="build/fuzz-findings/$target.log"
  inputs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
  # The last line of its progress: "#123 DONE cov: 45 ft: 67 corp: 8/90b ...".
  progress=$(grep -aE '^#[0-9]+.*cov: ' "$log" | tail -n 1 || true)
  number() { sed -n "s/.*$1: \([0-9]*\).*/\1/p" <<<"$progress"; }
  finding=-
  if [ "$(cat "build/fuzz-findings/$target.code")" != 0 ]; then
    finding=$(sed -n 's/.*Test unit written to //p' "$log" | tail -n 1)
    finding=${finding:-"see $log"}
    found=$((found + 1))
  fi
  printf '%-26s %12s %8s %8s %8s  %s\n' "$target" "${inputs:-?}" "$(number cov)" "$(number ft)" "$(number corp)" "$finding"
done
[ "$found" = 0 ] || {
  echo "$found targets with a finding: build/linux-debug/fuzz/TARGET FILE shows one again" >&2
  exit 1
}
