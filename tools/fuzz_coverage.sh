#!/usr/bin/env bash
# Prints how much of each parser of foreign bytes its fuzz targets reach: builds them with coverage, replays the
# seeds in the tree and, where there is one, the corpus of build/fuzz-corpus, and compares with fuzz/parsers.txt.
# usage: tools/fuzz_coverage.sh [--seeds] [--lines FILE...]
#        --seeds: the seeds in the tree alone; --lines: prints the lines of these sources that are not reached
# No part of ./test.sh; takes some minutes the first time, seconds after that. Needs the packages of the group
# "coverage". Exit code 1 where a parser is reached less than the list asks for, 2 on an error.
set -euo pipefail
cd "$(dirname "$0")/.."

with_corpus=1
lines=()
while [ $# -gt 0 ]; do
  case $1 in
    --seeds) with_corpus= ;;
    --lines) shift; lines=("$@"); break ;;
    *) sed -n '2,8s/^# \{0,1\}//p' "$0" >&2; exit 2 ;;
  esac
  shift
done
for tool in clang++ llvm-profdata llvm-cov python3; do
  command -v "$tool" >/dev/null || { echo "fuzz_coverage.sh: no $tool: tools/install_packages.sh build tests" >&2; exit 2; }
done

export CCACHE_BASEDIR=$PWD CCACHE_NOHASHDIR=1
folder=build/linux-coverage
profiles=$folder/profiles
rm -rf "$profiles"
mkdir -p "$profiles"
{ cmake --preset linux-coverage && cmake --build "$folder" --target fuzz_targets; } >"$folder/build.log" 2>&1 || {
  tail -n 40 "$folder/build.log" >&2
  echo "fuzz_coverage.sh: the targets do not build" >&2
  exit 2
}

programs=("$folder"/fuzz/*_fuzz)
for program in "${programs[@]}"; do
  target=$(basename "$program")
  inputs=("fuzz/corpus/$target")
  [ -n "$with_corpus" ] && [ -d "build/fuzz-corpus/$target" ] && inputs+=("build/fuzz-corpus/$target")
  LLVM_PROFILE_FILE="$profiles/$target.profraw" "$program" -runs=0 "${inputs[@]}" >"$profiles/$target.log" 2>&1 </dev/null || {
    tail -n 20 "$profiles/$target.log" >&2
    echo "fuzz_coverage.sh: $target fails on an input" >&2
    exit 2
  }
done
llvm-profdata merge "$profiles"/*.profraw -o "$profiles/all.profdata"

objects=("${programs[0]}")
for program in "${programs[@]:1}"; do objects+=(-object "$program"); done
if [ ${#lines[@]} -gt 0 ]; then
  llvm-cov show "${objects[@]}" -instr-profile="$profiles/all.profdata" >"$profiles/all.txt" 2>/dev/null
  for file in "${lines[@]}"; do
    echo "$file"
    awk -v file="$PWD/$file:" '/^\/.*:$/ { isWanted = $0 == file } isWanted && /^ *[0-9]+\| *0\|/' "$profiles/all.txt"
  done
  exit 0
fi
# It warns of functions in headers that one program uses and another does not.
llvm-cov export "${objects[@]}" -instr-profile="$profiles/all.profdata" -summary-only \
  >"$profiles/all.json" 2>"$profiles/export.log"
python3 - "$profiles/all.json" fuzz/parsers.txt <<'PYTHON'
import json, os, sys

files = json.load(open(sys.argv[1]))["data"][0]["files"]
reached = {os.path.relpath(file["filename"]): file["summary"]["lines"] for file in files}
low = count = covered = 0
print(f"{'parser':<44} {'lines':>6} {'reached':>8} {'percent':>8}")
for row in open(sys.argv[2]):
    row = row.split("#")[0].split()
    if not row:
        continue
    least, name = float(row[0]), row[1]
    lines = reached.get(name, {"count": 0, "covered": 0})
    percent = 100 * lines["covered"] / max(lines["count"], 1)
    is_low = percent < least
    print(f"{name:<44} {lines['count']:>6} {lines['covered']:>8} {percent:>7.1f}%{f'  below {least:g}' if is_low else ''}")
    low += is_low
    count += lines["count"]
    covered += lines["covered"]
print(f"{'all':<44} {count:>6} {covered:>8} {100 * covered / max(count, 1):>7.1f}%")
sys.exit(1 if low else 0)
PYTHON
