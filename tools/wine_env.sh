# Sourced by bash scripts that run Windows programs of the build under Wine. Makes the prefix build/wineprefix on
# first use, and gives:
#   wine_run PROGRAM ARGS  runs a program, at most WINE_TIMEOUT seconds (default 600); its exit code, 124 at the
#                          limit. Its temporary folder is the prefix's, apart from the host's
#   wine_keep              keeps one client alive while the calling shell lives, so that a program does not pay for
#                          a start of Wine's services; wine_run calls it
#   wine_raw_image LETTER FILE  gives a drive whose device is the raw bytes of an image; before the first wine_run
#   wine_stop              ends that client and the prefix's server
# WINEPREFIX may be set beforehand to share one prefix between checkouts.

wine_root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
export WINEPREFIX=${WINEPREFIX:-$wine_root/build/wineprefix}
export WINEARCH=win64 WINEDEBUG=-all
# No prompts for a .NET or HTML engine; no links from the prefix's menus to the host's desktop.
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
# Wine's Recycle Bin lies there, and not in the user's.
export XDG_DATA_HOME=$WINEPREFIX/xdg-data

# Documents, Desktop and others of a new prefix are links into the home folder, and Wine's deletion follows links.
wine_unlink_home() {
  [ -e "$WINEPREFIX/.unlinked" ] && return 0
  local link
  while IFS= read -r link; do
    rm "$link" && mkdir "$link" || return 1
  done < <(find "$WINEPREFIX/drive_c/users" -mindepth 2 -type l)
  mkdir -p "$XDG_DATA_HOME" && touch "$WINEPREFIX/.unlinked"
}

wine_make_prefix() {
  [ -e "$WINEPREFIX/.ready" ] && { wine_unlink_home; return; }
  mkdir -p "$WINEPREFIX"
  timeout 300 wineboot --init >/dev/null 2>&1 </dev/null || return 1
  # A crash would otherwise open a dialog and wait for a click.
  timeout 60 wine reg add 'HKCU\Software\Wine\WineDbg' /v ShowCrashDialog /t REG_DWORD /d 0 /f \
    >/dev/null 2>&1 </dev/null || return 1
  timeout 60 wineserver -w
  wine_unlink_home || return 1
  touch "$WINEPREFIX/.ready"
}

# The client reads a pipe that nobody writes to and that is closed when the calling shell ends. Its output goes
# nowhere, and so does that of the programs that bring up Wine's services and its desktop: these inherit it, and
# whoever reads the output of a later program would wait for them.
wine_keep() {
  local keeper
  keeper=$(cat "$WINEPREFIX/.keeper" 2>/dev/null) || true  # in a file: a pipeline runs this in a shell of its own
  [ -n "$keeper" ] && kill -0 "$keeper" 2>/dev/null && return 0
  wine_make_prefix || { echo "wine: the prefix $WINEPREFIX cannot be made" >&2; return 1; }
  tail --pid=$$ -f /dev/null 2>/dev/null </dev/null | setsid wine cmd >/dev/null 2>&1 &
  echo $! >"$WINEPREFIX/.keeper"
  timeout 60 wine rundll32 user32.dll,GetDesktopWindow >/dev/null 2>&1 </dev/null
}

wine_raw_image() {
  wine_make_prefix || return 1
  mkdir -p "$WINEPREFIX/raw-$1"
  ln -sfn "../raw-$1" "$WINEPREFIX/dosdevices/$1:"
  ln -sfn "$2" "$WINEPREFIX/dosdevices/$1::"
}

wine_run() {
  wine_keep || return 1
  timeout "${WINE_TIMEOUT:-600}" wine "$@"
}

wine_stop() {
  rm -f "$WINEPREFIX/.keeper"
  timeout 60 wineserver -k 2>/dev/null || true
  return 0
}
