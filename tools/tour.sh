#!/usr/bin/env bash
# Drives the window through a short tour, prints what it found and leaves pictures.
# usage: tools/tour.sh PROGRAM FOLDER     with WINEPREFIX, DISPLAY and QUILMARK_CONFIG_DIR as run.sh sets them
set -euo pipefail
program=$1
tour=$2
cd "$(dirname "$0")/.."
# shellcheck source=tools/wine_env.sh
source tools/wine_env.sh
rm -rf "$tour"
mkdir -p "$tour"
settings="$WINEPREFIX/drive_c/Quilmark-settings"
rm -rf "$settings"
# A file to be opened, with a name that no drive has by chance.
notes="$WINEPREFIX/drive_c/Quilmark tour/What the tour opened.txt"
mkdir -p "${notes%/*}"
printf 'Opened from the list by Enter.\r\n' >"$notes"
wine_keep
wine "$program" >/dev/null 2>&1 </dev/null &
running=$!

fail() { echo "tour: $1" >&2; exit 1; }

# Waits for a window whose title fits: as many seconds as are given, or as a large disk takes.
window_titled() {
  local found
  for _ in $(seq $((${2:-600} * 10))); do
    found=$(xdotool search --name "$1" 2>/dev/null | tail -n 1)
    [ -n "$found" ] && { echo "$found"; return; }
    kill -0 "$running" 2>/dev/null || break
    sleep 0.1
  done
  return 1
}

# Pixels in which two pictures differ.
difference() {
  compare -metric AE "$1" "$2" null: 2>&1 | awk '{ printf "%d", $1 }'
}

# What a search finds is counted after it is shown, and no title tells of it: a picture is kept when three in a row
# are the same, but for a caret that blinks.
picture() {
  local now="$tour/$1.png" last="$tour/.last.png" same=0
  import -window root "$now"
  for _ in $(seq 60); do
    [ "$same" = 2 ] && break
    sleep 0.5
    mv "$now" "$last"
    import -window root "$now"
    if [ "$(difference "$last" "$now")" -le 40 ]; then same=$((same + 1)); else same=0; fi
  done
  rm -f "$last"
}

clear_box() {
  xdotool key --clearmodifiers ctrl+a
  xdotool key BackSpace
  window_titled '^Quilmark - Filter: .* Hits: 0$' 60 >/dev/null || true
}

search_for() {
  local name=$1 text=$2 title
  clear_box
  xdotool type --delay 20 "$text"
  if window=$(window_titled '^Quilmark - Filter: .* Hits: [1-9][0-9]*$' 60); then
    title=$(xdotool getwindowname "$window")
    echo "$text: ${title##*Hits: } hits"
  else
    kill -0 "$running" 2>/dev/null || fail "the program ended"
    echo "$text: no hits in a minute"
    window=$(window_titled '^Quilmark') || fail "no window any more"
  fi
  picture "$name"
}

# Opens the first row as a user does, and closes the other program again.
first_row=214  # its middle, in the client area of a new window
open_first_row() {
  local other title
  xdotool mousemove --window "$window" 300 "$first_row" click 1
  xdotool key Return
  other=$(window_titled "$1" 15) || { echo "opened: nothing that came to the screen"; return; }
  title=$(xdotool getwindowname "$other")
  picture "$2"
  xdotool windowactivate --sync "$other" key --clearmodifiers alt+F4
  for _ in $(seq 100); do
    xdotool search --name "$1" >/dev/null 2>&1 || break
    sleep 0.1
  done
  xdotool windowactivate --sync "$window"
  echo "opened: $title"
}

window=$(window_titled '^Quilmark') || fail "no window came"
xdotool windowactivate --sync "$window"
until grep -qs 'startup index_ms=' "$settings/perf_metrics.log"; do
  kill -0 "$running" 2>/dev/null || fail "the program ended"
  sleep 0.1
done
sed -n 's/.*startup index_ms=\([0-9]*\) volume_count=\([0-9]*\).*/indexed \2 drives in \1 ms/p' "$settings/perf_metrics.log"
picture 1-ready
search_for 2-word readme
search_for 3-terms 'lib and .so or python'
xdotool key --window "$window" ctrl+Home
xdotool mousemove --window "$window" 500 400 click --repeat 20 5
sleep 0.5
picture 4-scrolled
search_for 5-found 'what the tour'
open_first_row '^What the tour opened' 6-opened
xdotool mousemove --window "$window" 300 30 click 1
clear_box
window=$(window_titled '^Quilmark - Filter: .* Hits: 1$' 15) || window=$(window_titled '^Quilmark') || fail "no window any more"
echo "recent: $(tr -d '\r' <"$settings/recent.ini" 2>/dev/null | cut -f 2)"
picture 7-recent
wmctrl -c Quilmark
echo "pictures: $tour"
