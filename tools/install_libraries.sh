#!/usr/bin/env bash
# Installs the libraries that come from npm into build/npm: those of cmake/npm/package.json, with the contents that
# package-lock.json names. usage: tools/install_libraries.sh
# Does nothing, and needs no network, where they are there already.
set -euo pipefail
cd "$(dirname "$0")/.."
# Two builds may be configured at a time.
mkdir -p build
exec 9>build/npm.lock
flock 9

place=build/npm
kept=$place/package-lock.json
installed=$place/node_modules/.package-lock.json
if [ -e "$installed" ] && cmp -s cmake/npm/package-lock.json "$kept"; then exit 0; fi

command -v npm >/dev/null || { echo "install_libraries.sh: no npm (tools/install_packages.sh build installs it)" >&2; exit 1; }
echo "Installing the libraries of cmake/npm"
mkdir -p "$place"
rm -f "$kept"
cp cmake/npm/package.json "$place"
log=$place/install.log
# npm verifies what it fetches against the lock; the copy beside it tells the next run that this one has succeeded.
cp cmake/npm/package-lock.json "$kept"
npm ci --prefix "$place" --prefer-offline --ignore-scripts --no-audit --no-fund >"$log" 2>&1 || { rm -f "$kept"; tail -n 20 "$log" >&2; exit 1; }
