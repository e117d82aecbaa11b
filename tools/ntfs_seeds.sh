#!/usr/bin/env bash
# Puts the beginnings of sampled master file tables into a folder, as seeds of a fuzz target; none where the
# samples do not stand beside the checkout.     usage: tools/ntfs_seeds.sh FOLDER
set -euo pipefail
cd "$(dirname "$0")/.."
samples=${QUILMARK_NTFS_SAMPLES:-../shared/ntfs-samples}
for packed in "$samples"/mft/*/mft.xz "$samples"/replay/*/*.mft.xz; do
  [ -f "$packed" ] || continue
  name=${packed#"$samples"/}
  # head ends the stream early, which is no failure.
  { xz -dc "$packed" 2>/dev/null || true; } | head -c 65536 >"$1/${name//\//-}"
done
