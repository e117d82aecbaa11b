#!/usr/bin/env bash
# Runs every benchmark beside its limit and its peers and prints ratios from one run.
# usage: bench/run.sh [--record] [--compare] [SUBJECT...] [COUNT...]    or: bench/run.sh --compare FILE.json
#        subjects: names walk ntfs attributes changes content (default: all); counts of names: 1000000 10000000
#        --record   keeps the report in bench/record, as text and as JSON
#        --compare  prints what changed since the last record of each subject on this kind of machine; with a record
#                   nothing is run, and it is compared with those before it
#        WORK=folder for the data (default: build/bench)
set -euo pipefail
start=$PWD
cd "$(dirname "$0")/.."
work=${WORK:-$PWD/build/bench}
if [[ " $* " == *".json "* ]]; then
  root=$PWD
  cd "$start"  # where the file's name was given
  exec python3 "$root/bench/report.py" "$work" "$@"
fi
tools/install_packages.sh build bench
mkdir -p "$work"
cmake --preset linux-release -DQUILMARK_TESTS=OFF >"$work/build.log" 2>&1
cmake --build build/linux-release >>"$work/build.log" 2>&1 || { tail -n 30 "$work/build.log" >&2; exit 1; }
for tool in make_names make_walk walk_limit; do
  cc -O2 -pthread -o "$work/$tool" "bench/tools/$tool.c"
done
cc -O3 -march=x86-64-v3 -o "$work/mft_limit" bench/tools/mft_limit.c
cc -O3 -march=x86-64-v3 -pthread -o "$work/content_limit" bench/tools/content_limit.c
exec python3 bench/report.py "$work" "$@"
