# Sourced by bash scripts that show windows under Wine, after wine_env.sh and before the first wine_run. Gives:
#   wine_fonts    Latin, CJK and other scripts in one smooth face: the host's, under the names that Windows has
#   wine_display  a virtual screen with a window manager, where there is no display
#   wine_display_stop  ends them
#   wine_dpi N    the scale of the screen, 96 for 100 %

wine_reg() {
  timeout 60 wine reg add "$@" /f >/dev/null 2>&1 </dev/null
}

wine_fonts() {
  wine_make_prefix || return 1
  [ -e "$WINEPREFIX/.fonts" ] && return 0
  local name face linked
  local substitutes='HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontSubstitutes'
  while IFS='|' read -r name face; do
    wine_reg 'HKCU\Software\Wine\Fonts\Replacements' /v "$name" /d "$face"
    # GDI+ looks here alone.
    wine_reg "$substitutes" /v "$name" /d "$face"
  done <<'FACES'
Segoe UI|Noto Sans CJK SC
Segoe UI Semibold|Noto Sans CJK SC
Tahoma|Noto Sans CJK SC
Microsoft YaHei UI|Noto Sans CJK SC
Yu Gothic UI|Noto Sans CJK JP
Malgun Gothic|Noto Sans CJK KR
Microsoft JhengHei UI|Noto Sans CJK TC
Consolas|Liberation Mono
FACES
  linked='NotoSansArabic-Regular.ttf,Noto Sans Arabic\0NotoSansDevanagari-Regular.ttf,Noto Sans Devanagari\0NotoSansThai-Regular.ttf,Noto Sans Thai\0NotoSansHebrew-Regular.ttf,Noto Sans Hebrew\0NotoSansSymbols2-Regular.ttf,Noto Sans Symbols2\0DejaVuSans.ttf,DejaVu Sans'
  wine_reg 'HKLM\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink' /v 'Noto Sans CJK SC' \
    /t REG_MULTI_SZ /d "$linked"
  wine_reg 'HKCU\Control Panel\Desktop' /v FontSmoothing /d 2
  wine_reg 'HKCU\Control Panel\Desktop' /v FontSmoothingType /t REG_DWORD /d 2
  wine_reg 'HKCU\Control Panel\Desktop' /v FontSmoothingGamma /t REG_DWORD /d 578
  wine_reg 'HKCU\Control Panel\Desktop' /v FontSmoothingOrientation /t REG_DWORD /d 1
  # Fonts are read when the server starts.
  timeout 60 wineserver -k || true
  touch "$WINEPREFIX/.fonts"
}

wine_display() {
  [ -n "${DISPLAY:-}" ] && return 0
  local chosen
  chosen=$(mktemp)
  # The server chooses a number that is free, and writes it down once it takes clients.
  Xvfb -displayfd 5 -screen 0 2560x1440x24 -dpi 96 -nolisten tcp 5>"$chosen" >/dev/null 2>&1 </dev/null &
  wine_display_pids=$!
  until [ -s "$chosen" ]; do
    kill -0 "$wine_display_pids" 2>/dev/null || { echo "wine: no virtual screen" >&2; return 1; }
    sleep 0.05
  done
  export DISPLAY=":$(cat "$chosen")"
  rm -f "$chosen"
  openbox >/dev/null 2>&1 </dev/null &
  wine_display_pids="$wine_display_pids $!"
}

wine_display_stop() {
  # shellcheck disable=SC2086
  [ -z "${wine_display_pids:-}" ] || kill $wine_display_pids 2>/dev/null || true
  wine_display_pids=
  return 0
}

wine_dpi() {
  wine_reg 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$1"
}
