#!/usr/bin/env bash
# Runs every benchmark beside its limit and its peers and prints ratios from one run.
# usage: bench/run.sh [SUBJECT...] [COUNT...]      subjects: names walk ntfs attributes (default: all)
#        default: 1000000 10000000 names.   WORK=folder for the data (default: build/bench)
set -euo pipefail
cd "$(dirname "$0")/.."
tools/install_packages.sh build bench
work=${WORK:-$PWD/build/bench}
mkdir -p "$work"
cmake --preset linux-release -DQUILMARK_TESTS=OFF >"$work/build.log" 2>&1
cmake --build build/linux-release >>"$work/build.log" 2>&1 || { tail -n 30 "$work/build.log" >&2; exit 1; }
for tool in make_names make_walk walk_limit; do
  cc -O2 -pthread -o "$work/$tool" "bench/tools/$tool.c"
done
cc -O3 -march=x86-64-v3 -o "$work/mft_limit" bench/tools/mft_limit.c
exec python3 bench/report.py "$work" "$@"
