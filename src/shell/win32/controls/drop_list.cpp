#include "shell/win32/controls/drop_list.h"

#include "platform/win32/system_function.h"
#include "shell/view/scrollbar.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/gdi/gdi_canvas.h"
#include "shell/win32/system/system_calls.h"

namespace quilmark {

namespace {

HWND ListOf(HWND combo) {
  COMBOBOXINFO info = {};
  info.cbSize = sizeof info;
  return IsWindow(combo) && GetComboBoxInfo(combo, &info) ? info.hwndList : nullptr;
}

// The system's bar knows no dark colours: ours stands on it after each of its own paints.
void PaintOverBar(HWND list, const ControlHost& host) {
  SCROLLBARINFO bar = {};
  bar.cbSize = sizeof bar;
  SCROLLINFO range = {};
  range.cbSize = sizeof range;
  range.fMask = SIF_ALL;
  const bool isShown = GetScrollBarInfo(list, OBJID_VSCROLL, &bar) &&
                       (bar.rgstate[0] & STATE_SYSTEM_INVISIBLE) == 0 &&
                       GetScrollInfo(list, SB_VERT, &range);
  if (!isShown) return;
  RECT window = {};
  GetWindowRect(list, &window);
  OffsetRect(&bar.rcScrollBar, -window.left, -window.top);
  const ViewContext context = host.Context();
  const auto place = DropListBar(FromRECT(bar.rcScrollBar),
                                 {.minimum = range.nMin,
                                  .maximum = range.nMax,
                                  .page = static_cast<int>(range.nPage),
                                  .position = range.nPos},
                                 context.dpi);
  if (!place) return;
  const WindowDc dc(list, WindowDc::Area::kWholeWindow);
  GdiCanvas canvas(dc.Get(), host.Fonts(), place->track);
  canvas.Fill(place->track, context.palette.surface);
  canvas.FillRound(place->thumb, context.Scaled(kThumbRadius), context.palette.separator);
}

// What may make the system draw its bar anew.
bool MayDrawBar(UINT message) {
  switch (message) {
    case WM_PAINT:
    case WM_NCPAINT:
    case WM_VSCROLL:
    case WM_MOUSEWHEEL:
    case WM_MOUSEMOVE:
    case WM_NCMOUSEMOVE:
    case WM_LBUTTONDOWN:
    case WM_LBUTTONUP:
    case WM_NCLBUTTONDOWN:
    case WM_TIMER:
    case WM_KEYDOWN:
    case LB_SETTOPINDEX:
    case LB_SETCURSEL:
    case LB_SETCARETINDEX:
      return true;
    default:
      return false;
  }
}

LRESULT CALLBACK ListProcedure(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR reference) {
  ControlHost& host = HostOf(reference);
  if (message == WM_ERASEBKGND) {
    FillClient(list, reinterpret_cast<HDC>(wParam), host.Context().palette.editWell);
    return 1;
  }
  if (message == WM_NCDESTROY) LetGo(list, ListProcedure);
  const LRESULT result = DefSubclassProc(list, message, wParam, lParam);
  if (MayDrawBar(message) && IsWindow(list)) PaintOverBar(list, host);
  return result;
}

LRESULT CALLBACK BarProcedure(HWND bar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                              DWORD_PTR reference) {
  if (message == WM_ERASEBKGND) {
    FillClient(bar, reinterpret_cast<HDC>(wParam), HostOf(reference).Context().palette.surface);
    return 1;
  }
  if (message == WM_NCDESTROY) LetGo(bar, BarProcedure);
  return DefSubclassProc(bar, message, wParam, lParam);
}

// Scrollbars that are windows of their own.
template <typename Action>
void ForEachBar(HWND list, const Action& act) {
  for (HWND bar = FindWindowExW(list, nullptr, L"ScrollBar", nullptr); bar != nullptr;
       bar = FindWindowExW(list, bar, L"ScrollBar", nullptr)) {
    act(bar);
  }
}

void StyleBar(HWND bar, ControlHost& host) {
  ThemePopup(bar, host.IsDark());
  TakeOver(bar, BarProcedure, host);
  const RECT place = RectInParent(bar);
  const int width = host.Context().Scaled(kBarWidth);
  MoveWindow(bar, place.right - width, place.top, width, place.bottom - place.top, TRUE);
}

}  // namespace

void ThemePopup(HWND popup, bool isDark) {
  using SetTheme = HRESULT(WINAPI*)(HWND, LPCWSTR, LPCWSTR);
  const auto set = SystemCall<SetTheme>(L"uxtheme.dll", "SetWindowTheme");
  if (set == nullptr) return;
  if (isDark) {
    set(popup, L"DarkMode_Explorer", nullptr);
  } else {
    set(popup, L"", L"");
  }
}

void StyleDropDown(HWND combo, ControlHost& host) {
  const HWND list = ListOf(combo);
  if (!IsWindow(list)) return;
  DarkenFrame(list, host.IsDark());
  ThemePopup(list, host.IsDark());
  TakeOver(list, ListProcedure, host);
  ForEachBar(list, [&host](HWND bar) { StyleBar(bar, host); });
}

void UnstyleDropDown(HWND combo) {
  const HWND list = ListOf(combo);
  if (!IsWindow(list)) return;
  ForEachBar(list, [](HWND bar) { LetGo(bar, BarProcedure); });
  LetGo(list, ListProcedure);
}

}  // namespace quilmark
