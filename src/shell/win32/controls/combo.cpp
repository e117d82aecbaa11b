#include "shell/win32/controls/combo.h"

#include <algorithm>

#include "canvas/scale.h"
#include "platform/win32/wide.h"
#include "shell/view/combo_field.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/gdi/gdi_canvas.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kItemHeight = 28, kFieldHeight = 36, kWithList = 280;
constexpr UINT kField = static_cast<UINT>(-1);  // as the number of an item

std::u16string ItemText(HWND combo, UINT item) {
  const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, item, 0);
  if (length == CB_ERR) return {};
  std::u16string text(static_cast<size_t>(length) + 1, u'\0');
  SendMessageW(combo, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
  text.pop_back();
  return text;
}

std::u16string ChosenText(HWND combo) {
  const int chosen = ChosenIn(combo);
  return chosen < 0 ? std::u16string() : ItemText(combo, static_cast<UINT>(chosen));
}

void DrawField(HWND combo, HDC dc, const ControlHost& host) {
  const ViewContext context = ContextOf(host, combo);
  GdiCanvas canvas(dc, host.Fonts(), context.client);
  PaintComboField(canvas, context, context.client, ChosenText(combo), context.hasFocus);
}

// The whole field is ours: the control's own theme stays light.
LRESULT CALLBACK ComboProcedure(HWND combo, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR reference) {
  if (TakeTabKey(combo, message, wParam)) return 0;
  if (message == WM_PAINT) {
    const PaintScope paint(combo);
    DrawField(combo, paint.Dc(), HostOf(reference));
    return 0;
  }
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) InvalidateRect(combo, nullptr, FALSE);
  if (message == WM_NCDESTROY) LetGo(combo, ComboProcedure);
  return DefSubclassProc(combo, message, wParam, lParam);
}

void SetItemHeights(HWND combo, uint32_t dpi) {
  SendMessageW(combo, CB_SETITEMHEIGHT, kField, ScaleFor(dpi, kFieldHeight));
  SendMessageW(combo, CB_SETITEMHEIGHT, 0, ScaleFor(dpi, kItemHeight));
}

// Makes the closed control as high as wanted, which its own arithmetic does not give.
void FitComboHeight(HWND combo, int height, uint32_t dpi) {
  constexpr int kRounds = 8;
  const int least = ScaleFor(dpi, 20), most = height + ScaleFor(dpi, 4);
  // A higher one is no height of a field: the list is in it.
  const int readable = std::min(height + ScaleFor(dpi, 12), ScaleFor(dpi, kWithList - 40));
  const int usual = std::max(height - 2, least);
  int item = usual;
  for (int round = 0; round < kRounds; ++round) {
    SendMessageW(combo, CB_SETITEMHEIGHT, kField, item);
    const RECT client = ClientRectOf(combo);
    if (client.bottom == height) return;
    if (client.bottom > readable) break;
    item = std::clamp<int>(item + height - client.bottom, least, most);
  }
  SendMessageW(combo, CB_SETITEMHEIGHT, kField, usual);
}

bool IsInPlace(HWND combo, const ComboPlace& place) {
  const RECT rect = RectInParent(combo), client = ClientRectOf(combo);
  const Rect& field = place.field;
  return rect.left == field.left && rect.top == field.top && rect.right == field.right &&
         client.bottom == Height(field) && IsShown(combo) == place.isShown;
}

}  // namespace

HWND MakeCombo(HWND parent, int id, ControlHost& host) {
  const HWND combo = MakeControl(
      parent,
      {L"COMBOBOX", WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS},
      id, host.Fonts().Of(FontRole::kMain));
  TakeOver(combo, ComboProcedure, host);
  return combo;
}

void FillCombo(HWND combo, const std::vector<std::u16string>& items, int chosen) {
  if (!IsWindow(combo)) return;
  SendMessageW(combo, CB_RESETCONTENT, 0, 0);
  for (const std::u16string& item : items) {
    SendMessageW(combo, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(item.c_str()));
  }
  const bool exists = chosen >= 0 && static_cast<size_t>(chosen) < items.size();
  SendMessageW(combo, CB_SETCURSEL, exists ? static_cast<WPARAM>(chosen) : 0, 0);
  InvalidateRect(combo, nullptr, FALSE);
}

int ChosenIn(HWND combo) { return static_cast<int>(SendMessageW(combo, CB_GETCURSEL, 0, 0)); }

void DrawComboItem(const DRAWITEMSTRUCT& item, const ControlHost& host) {
  if (item.itemID == kField) return;
  // The closed field, which some systems draw past the control's own paint, looks as DrawField leaves
  // it.
  const bool isField = (item.itemState & ODS_COMBOBOXEDIT) != 0;
  const bool isSelected = (item.itemState & ODS_SELECTED) != 0;
  const ComboRow kind = isField ? ComboRow::kField : isSelected ? ComboRow::kSelected : ComboRow::kPlain;
  const Rect place = FromRECT(item.rcItem);
  GdiCanvas canvas(item.hDC, host.Fonts(), place);
  PaintComboRow(canvas, ContextOf(host, item.hwndItem), place, ItemText(item.hwndItem, item.itemID),
                kind);
}

void MeasureComboItem(MEASUREITEMSTRUCT& item, uint32_t dpi) {
  item.itemHeight = static_cast<UINT>(ScaleFor(dpi, item.itemID == kField ? kFieldHeight : kItemHeight));
}

void PlaceCombo(HWND combo, const ComboPlace& place, uint32_t dpi) {
  if (!IsWindow(combo) || IsInPlace(combo, place)) return;
  const Rect& field = place.field;
  SetItemHeights(combo, dpi);
  SendMessageW(combo, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(ScaleFor(dpi, place.listWidth)), 0);
  SetWindowPos(combo, nullptr, field.left, field.top, Width(field), ScaleFor(dpi, kWithList),
               SWP_NOZORDER | SWP_NOACTIVATE | (place.isShown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  FitComboHeight(combo, Height(field), dpi);
}

}  // namespace quilmark
