#!/usr/bin/env bash
# Lays the pictures of the window tests out on one sheet, each over its name.
# usage: tools/contact_sheet.sh      from build/windows/window-tests/sheet-*.png to build/contact-sheet.png
set -euo pipefail
cd "$(dirname "$0")/.."
shopt -s nullglob
pictures=(build/windows/window-tests/sheet-*.png)
[ ${#pictures[@]} -gt 0 ] || { echo "contact_sheet.sh: no pictures: run window_tests first" >&2; exit 1; }
tiles=()
for picture in "${pictures[@]}"; do
  caption=$(basename "$picture" .png)
  tiles+=(-label "${caption#sheet-}" "$picture")
done
montage "${tiles[@]}" -tile 4x -geometry '640x400>+8+8' -background '#808080' -fill white -pointsize 16 build/contact-sheet.png
echo "${#pictures[@]} pictures: build/contact-sheet.png"
