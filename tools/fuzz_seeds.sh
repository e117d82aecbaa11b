#!/usr/bin/env bash
# Keeps as seeds what fuzzing found: adds to fuzz/corpus/TARGET the inputs of build/fuzz-corpus/TARGET that reach
# code which no seed reaches, as few and as short as will do. They are named by their hash.
# usage: tools/fuzz_seeds.sh [TARGET...]     TARGET: such as query_fuzz; without one all that may be kept
# Inputs of 4 KiB at most are taken. Corpora that hold parts of sampled volumes are never taken into the tree.
set -euo pipefail
cd "$(dirname "$0")/.."

# tools/ntfs_seeds.sh puts samples there.
sampled="ntfs_volume_fuzz mft_facts_fuzz volume_build_fuzz"

targets=("$@")
[ $# -gt 0 ] || mapfile -t targets < <(basename -s .cpp fuzz/*/*_fuzz.cpp | sort)
for target in "${targets[@]}"; do
  corpus="build/fuzz-corpus/$target" seeds="fuzz/corpus/$target" program="build/linux-debug/fuzz/$target"
  if grep -qw -- "$target" <<<"$sampled"; then
    [ $# -eq 0 ] || { echo "fuzz_seeds.sh: the corpus of $target may hold samples" >&2; exit 2; }
    continue
  fi
  if ! [ -d "$corpus" ] || ! [ -x "$program" ]; then
    [ $# -eq 0 ] || { echo "fuzz_seeds.sh: nothing to take from for $target; run tools/fuzz_long.sh first" >&2; exit 2; }
    continue
  fi
  mkdir -p "$seeds"
  before=$(find "$seeds" -type f | wc -l)
  # Edges alone count: how often one is passed makes many inputs that tell little apart.
  "$program" -merge=1 -use_counters=0 -max_len=4096 "$seeds" "$corpus" >build/fuzz-merge.log 2>&1 || {
    tail -n 20 build/fuzz-merge.log >&2
    echo "fuzz_seeds.sh: $target fails on an input" >&2
    exit 1
  }
  after=$(find "$seeds" -type f | wc -l)
  [ "$after" = "$before" ] || echo "$target: $((after - before)) seeds more"
done
echo "$(find fuzz/corpus -type f | wc -l) seeds, $(find fuzz/corpus -type f -printf '%s\n' | awk '{ sum += $1 } END { print sum }') bytes"
