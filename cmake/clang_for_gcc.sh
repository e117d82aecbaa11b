#!/usr/bin/env bash
# Runs a command that calls mingw-w64's g++, with clang in its place. Which sources: cmake/compile_options.cmake.
set -euo pipefail

command=()
last=
for argument in "$@"; do
  [[ $argument = *-w64-mingw32-g++* ]] && argument=clang++
  # clang would take the older precompiled header in making the new one.
  [[ $last = -o && $argument = *.gch ]] && rm -f "$argument"
  command+=("$argument")
  last=$argument
done
exec "${command[@]}"
