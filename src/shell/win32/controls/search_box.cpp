#include "shell/win32/controls/search_box.h"

#include <commctrl.h>

#include <algorithm>

#include "config/palette.h"
#include "shell/search/search_keys.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/controls/window_text.h"
#include "shell/win32/window/main_window.h"

namespace quilmark {

namespace {

constexpr UINT_PTR kSubclass = 1;
constexpr int kLeftInset = 14, kRightInset = 8, kRadius = 8;  // pixels at 96 dpi

int FontHeight(HWND edit) {
  const WindowDc dc(edit);
  const HFONT font = FontOf(edit);
  if (font == nullptr) return Scaled(13);
  const SelectScope selected(dc.Get(), font);
  TEXTMETRICW metrics = {};
  GetTextMetricsW(dc.Get(), &metrics);
  return metrics.tmHeight;
}

// The corners outside the rounded frame show the window behind.
void DrawFrame(HWND edit) {
  const WindowDc dc(edit);
  const RECT client = ClientRectOf(edit);
  const UniquePen pen(CreatePen(PS_SOLID, 1, FrameColorOf(edit)));
  const UniqueRegion all(CreateRectRgnIndirect(&client));
  const UniqueRegion round(
      CreateRoundRectRgn(0, 0, client.right + 1, client.bottom + 1, Scaled(kRadius), Scaled(kRadius)));
  CombineRgn(all.Get(), all.Get(), round.Get(), RGN_DIFF);
  SetDCBrushColor(dc.Get(), CurrentPalette.toolbar);
  FillRgn(dc.Get(), all.Get(), static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  const SelectScope hollow(dc.Get(), GetStockObject(HOLLOW_BRUSH));
  const SelectScope outline(dc.Get(), pen.Get());
  RoundRect(dc.Get(), 0, 0, client.right, client.bottom, Scaled(kRadius), Scaled(kRadius));
}

LRESULT CALLBACK EditProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                               DWORD_PTR) {
  if (const auto taken = TakeEditMessage(edit, message, wParam, lParam)) return *taken;
  switch (message) {
    case WM_ERASEBKGND:
      FillClient(edit, reinterpret_cast<HDC>(wParam), CurrentPalette.editWell);
      return 1;
    case WM_KEYDOWN:
      if (TakeSearchKey(TheWindow(), static_cast<uint32_t>(wParam), TextOfWindow(edit, kLongestQuery))) {
        return 0;
      }
      break;
    case WM_PAINT: {
      const LRESULT result = DefSubclassProc(edit, message, wParam, lParam);
      DrawFrame(edit);
      return result;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(edit, nullptr, FALSE);
      break;
    case WM_NCDESTROY:
      RemoveWindowSubclass(edit, EditProcedure, kSubclass);
      break;
    default:
      break;
  }
  return DefSubclassProc(edit, message, wParam, lParam);
}

}  // namespace

HWND MakeSearchBox(HWND parent, HFONT font) {
  const HWND edit = MakeControl(
      parent,
      {L"EDIT", WS_VISIBLE | WS_DISABLED | WS_TABSTOP | ES_LEFT | ES_AUTOHSCROLL | ES_MULTILINE,
       kQueryBox},
      font);
  SendMessageW(edit, EM_SETLIMITTEXT, kLongestQuery, 0);
  SetWindowSubclass(edit, EditProcedure, kSubclass, 0);
  return edit;
}

void ApplySearchBoxRect(HWND searchBox) { CentreEditLine(searchBox, kLeftInset, kRightInset); }

void CentreEditLine(HWND edit, int leftInset, int rightInset) {
  if (!IsWindow(edit)) return;
  SendMessageW(edit, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
  RECT rect = ClientRectOf(edit);
  const int inset = std::max<int>((rect.bottom - FontHeight(edit)) / 2, 0);
  rect.left += Scaled(leftInset);
  rect.right -= Scaled(rightInset);
  rect.top += inset;
  rect.bottom -= inset;
  SendMessageW(edit, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&rect));
  SendMessageW(edit, EM_SCROLLCARET, 0, 0);
}

}  // namespace quilmark
