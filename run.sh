#!/usr/bin/env bash
# Builds Quilmark and shows it on real folders. usage: ./run.sh [FOLDER...]     default: the home folder
set -euo pipefail
start=$PWD
cd "$(dirname "$0")"
here=$PWD

tools/install_packages.sh build
echo "Building ..."
mkdir -p build
{ cmake --preset linux-release -DQUILMARK_TESTS=OFF -DQUILMARK_BENCH=OFF -B build/linux-run &&
  cmake --build build/linux-run --target quilmark; } >build/run-build.log 2>&1 ||
  { tail -n 40 build/run-build.log >&2; exit 1; }

cd "$start"
[ $# -gt 0 ] || set -- "$HOME"
"$here/build/linux-run/quilmark" find --interactive --stats --limit 3 "$@" <<'QUERIES' || [ $? = 1 ]
readme
lib and .so or python
"and" and .h
zqxjvkwy
QUERIES
echo
echo "Your own: $here/build/linux-run/quilmark find --interactive$(printf ' %q' "$@")"
