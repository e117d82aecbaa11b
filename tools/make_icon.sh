#!/usr/bin/env bash
# Draws resources/quilmark.ico from its two SVG files: a plain drawing for 16 to 24 pixels, the full one above.
# usage: tools/make_icon.sh      needs rsvg-convert (librsvg2-bin) and convert (imagemagick)
set -euo pipefail
cd "$(dirname "$0")/../resources"
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
for size in 16 20 24; do rsvg-convert -w $size -h $size icon-small.svg -o "$folder/$size.png"; done
for size in 32 40 48 64 128 256; do rsvg-convert -w $size -h $size icon.svg -o "$folder/$size.png"; done
convert "$folder"/{16,20,24,32,40,48,64,128,256}.png quilmark.ico
