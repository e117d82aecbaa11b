#include "shell/win32/controls/row_tip.h"

#include <commctrl.h>

#include "platform/win32/wide.h"
#include "shell/view/tooltip_place.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

namespace {

constexpr int kMostWidth = 600;  // pixels at 96 dpi

TTTOOLINFOW ToolOf(HWND owner) {
  TTTOOLINFOW tool = {};
  tool.cbSize = sizeof tool;
  tool.uFlags = TTF_TRACK | TTF_ABSOLUTE | TTF_TRANSPARENT;
  tool.hwnd = owner;
  tool.uId = 1;
  return tool;
}

Rect WorkAreaAt(POINT cursor) {
  MONITORINFO monitor = {};
  monitor.cbSize = sizeof monitor;
  GetMonitorInfoW(MonitorFromPoint(cursor, MONITOR_DEFAULTTONEAREST), &monitor);
  return FromRECT(monitor.rcWork);
}

}  // namespace

void RowTip::Open(HWND window) {
  owner_ = window;
  tip_ = CreateWindowExW(
      WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, CW_USEDEFAULT,
      CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT, window, nullptr, GetModuleHandleW(nullptr), nullptr);
  TTTOOLINFOW tool = ToolOf(window);
  GetClientRect(window, &tool.rect);
  SendMessageW(tip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  // A theme of the system would keep its own colours.
  SendMessageW(tip_, TTM_SETWINDOWTHEME, 0, reinterpret_cast<LPARAM>(L""));
}

void RowTip::Show(const std::u16string& text, const ViewContext& context, HFONT font) {
  if (text.empty()) return Hide();
  SendMessageW(tip_, TTM_SETMAXTIPWIDTH, 0, context.Scaled(kMostWidth));
  SendMessageW(tip_, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  SendMessageW(tip_, TTM_SETTIPBKCOLOR, context.palette.cardBackground, 0);
  SendMessageW(tip_, TTM_SETTIPTEXTCOLOR, context.palette.text, 0);
  TTTOOLINFOW tool = ToolOf(owner_);
  tool.lpszText = const_cast<wchar_t*>(Wide(text));
  SendMessageW(tip_, TTM_UPDATETIPTEXTW, 0, reinterpret_cast<LPARAM>(&tool));
  const LRESULT size = SendMessageW(tip_, TTM_GETBUBBLESIZE, 0, reinterpret_cast<LPARAM>(&tool));
  POINT cursor = {};
  GetCursorPos(&cursor);
  const Rect area = WorkAreaAt(cursor);
  const auto place = [&](int width, int height) {
    const Point at = PlaceTip({cursor.x, cursor.y}, width, height, area, context.dpi);
    SendMessageW(tip_, TTM_TRACKPOSITION, 0, MAKELPARAM(at.x, at.y));
  };
  place(LOWORD(size), HIWORD(size));
  SendMessageW(tip_, TTM_TRACKACTIVATE, TRUE, reinterpret_cast<LPARAM>(&tool));
  // The tip has its final size only now.
  RECT shown = {};
  GetWindowRect(tip_, &shown);
  place(shown.right - shown.left, shown.bottom - shown.top);
  isShown_ = true;
}

void RowTip::Hide() {
  if (!isShown_) return;
  isShown_ = false;
  TTTOOLINFOW tool = ToolOf(owner_);
  SendMessageW(tip_, TTM_TRACKACTIVATE, FALSE, reinterpret_cast<LPARAM>(&tool));
}

}  // namespace quilmark
