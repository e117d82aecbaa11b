#include "shell/win32/controls/search_box.h"

#include <optional>

#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/controls/edit_line.h"

namespace quilmark {

namespace {

constexpr int kRadius = 8;  // pixels at 96 dpi

// The corners outside the rounded frame show the window behind.
void DrawFrame(HWND edit, const ViewContext& context) {
  const WindowDc dc(edit);
  const RECT client = ToRECT(context.client);
  const int radius = context.Scaled(kRadius);
  const UniquePen pen(CreatePen(PS_SOLID, 1, FrameColorOf(context)));
  const UniqueRegion all(CreateRectRgnIndirect(&client));
  const UniqueRegion round(
      CreateRoundRectRgn(0, 0, client.right + 1, client.bottom + 1, radius, radius));
  CombineRgn(all.Get(), all.Get(), round.Get(), RGN_DIFF);
  SetDCBrushColor(dc.Get(), context.palette.toolbar);
  FillRgn(dc.Get(), all.Get(), static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
  const SelectScope hollow(dc.Get(), GetStockObject(HOLLOW_BRUSH));
  const SelectScope outline(dc.Get(), pen.Get());
  RoundRect(dc.Get(), 0, 0, client.right, client.bottom, radius, radius);
}

std::optional<ControlEvent::Kind> KindOfKey(WPARAM key) {
  switch (key) {
    case VK_RETURN:
      return ControlEvent::kEnter;
    case VK_ESCAPE:
      return ControlEvent::kEscape;
    case VK_F4:
      return ControlEvent::kF4;
    default:
      return std::nullopt;
  }
}

bool TakeKey(HWND edit, WPARAM key, LPARAM state, ControlHost& host) {
  const auto kind = KindOfKey(key);
  if (!kind) return false;
  // One that is held searches, cancels or opens once.
  if (IsRepeat(state)) return *kind != ControlEvent::kF4;
  return host.OnControl({.kind = *kind, .id = GetDlgCtrlID(edit), .text = TextOfEdit(edit)});
}

bool IsTakenFirst(UINT message, WPARAM key, LPARAM state, ControlHost& host) {
  if (message != WM_KEYDOWN && message != WM_SYSKEYDOWN) return false;
  return host.TakeKey(static_cast<uint32_t>(key), IsRepeat(state));
}

LRESULT CALLBACK SearchBoxProcedure(HWND edit, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                    DWORD_PTR reference) {
  ControlHost& host = HostOf(reference);
  if (IsTakenFirst(message, wParam, lParam, host)) return 0;
  if (const auto taken = TakeEditMessage(edit, message, wParam, lParam)) return *taken;
  switch (message) {
    case WM_ERASEBKGND:
      FillClient(edit, reinterpret_cast<HDC>(wParam), host.Context().palette.editWell);
      return 1;
    case WM_KEYDOWN:
      if (TakeKey(edit, wParam, lParam, host)) return 0;
      break;
    case WM_PAINT: {
      const LRESULT result = DefSubclassProc(edit, message, wParam, lParam);
      DrawFrame(edit, ContextOf(host, edit));
      return result;
    }
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(edit, nullptr, FALSE);
      break;
    case WM_NCDESTROY:
      LetGo(edit, SearchBoxProcedure);
      break;
    default:
      break;
  }
  return DefSubclassProc(edit, message, wParam, lParam);
}

}  // namespace

HWND MakeSearchBox(HWND parent, int id, size_t longest, ControlHost& host) {
  const HWND edit =
      MakeEdit(parent, id, WS_TABSTOP | ES_LEFT, longest, host.Fonts().Of(FontRole::kMain));
  TakeOver(edit, SearchBoxProcedure, host);
  return edit;
}

}  // namespace quilmark
