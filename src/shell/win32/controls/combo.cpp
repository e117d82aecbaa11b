#include "shell/win32/controls/combo.h"

#include <commctrl.h>

#include <algorithm>

#include "config/palette.h"
#include "platform/win32/wide.h"
#include "shell/app/app_state.h"
#include "shell/view/combo_field.h"
#include "shell/view/window_ids.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/gdi/gdi_canvas.h"

namespace quilmark {

namespace {

constexpr UINT_PTR kSubclass = 1;
// Pixels at 96 dpi.
constexpr int kItemHeight = 28, kFieldHeight = 36, kWithList = 280;

struct DropRow {
  int id;
  int width;  // of the drop list, pixels at 96 dpi
};
constexpr DropRow kDropRows[] = {
    {kScopeBox, 460}, {kSizePreset, 160}, {kTimePreset, 160}, {kSizeUnit, 90}};

std::u16string ItemText(HWND combo, UINT item) {
  const LRESULT length = SendMessageW(combo, CB_GETLBTEXTLEN, item, 0);
  if (length == CB_ERR) return {};
  std::u16string text(static_cast<size_t>(length) + 1, u'\0');
  SendMessageW(combo, CB_GETLBTEXT, item, reinterpret_cast<LPARAM>(text.data()));
  text.pop_back();
  return text;
}

std::u16string ChosenText(HWND combo) {
  const LRESULT chosen = SendMessageW(combo, CB_GETCURSEL, 0, 0);
  return chosen == CB_ERR ? std::u16string() : ItemText(combo, static_cast<UINT>(chosen));
}

void DrawField(HWND combo, HDC dc) {
  const ViewContext context = ContextOf(combo);
  GdiCanvas canvas(dc, CurrentFonts(), context.client);
  PaintComboField(canvas, context, context.client, ChosenText(combo), context.hasFocus);
}

// The whole field is ours: the control's own theme stays light.
LRESULT CALLBACK ComboProcedure(HWND combo, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                DWORD_PTR) {
  if (TakeTabKey(combo, message, wParam)) return 0;
  if (message == WM_PAINT) {
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(combo, &paint);
    DrawField(combo, dc);
    EndPaint(combo, &paint);
    return 0;
  }
  if (message == WM_ERASEBKGND) return 1;
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) InvalidateRect(combo, nullptr, FALSE);
  if (message == WM_NCDESTROY) RemoveWindowSubclass(combo, ComboProcedure, kSubclass);
  return DefSubclassProc(combo, message, wParam, lParam);
}

// And the width of the drop list.
void SetComboItemHeights(HWND combo, uint32_t dpi) {
  SendMessageW(combo, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1),
               std::max(ScaleFor(dpi, 24), ScaleFor(dpi, kFieldHeight)));
  SendMessageW(combo, CB_SETITEMHEIGHT, 0, ScaleFor(dpi, kItemHeight));
  for (const DropRow& row : kDropRows) {
    if (row.id != GetDlgCtrlID(combo)) continue;
    SendMessageW(combo, CB_SETDROPPEDWIDTH, static_cast<WPARAM>(ScaleFor(dpi, row.width)), 0);
  }
}

// Makes the closed control as high as wanted, which its own arithmetic does not give.
void FitComboHeight(HWND combo, int height) {
  constexpr int kRounds = 8;
  const int least = Scaled(20), most = height + Scaled(4);
  // A higher one is no height of a field: the list is in it.
  const int readable = std::min(height + Scaled(12), Scaled(kWithList - 40));
  const int usual = std::max(height - 2, least);
  int item = usual;
  for (int round = 0; round < kRounds; ++round) {
    SendMessageW(combo, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), item);
    const RECT client = ClientRectOf(combo);
    if (client.bottom == height) return;
    if (client.bottom > readable) break;
    item = std::clamp<int>(item + height - client.bottom, least, most);
  }
  SendMessageW(combo, CB_SETITEMHEIGHT, static_cast<WPARAM>(-1), usual);
}

bool IsInPlace(HWND combo, const Rect& field, bool isShown) {
  const RECT rect = RectInParent(combo), client = ClientRectOf(combo);
  return rect.left == field.left && rect.top == field.top && rect.right == field.right &&
         client.bottom == field.bottom - field.top && (IsWindowVisible(combo) != FALSE) == isShown;
}

}  // namespace

HWND MakeCombo(HWND parent, int id, HFONT font) {
  const HWND combo = MakeControl(
      parent,
      {L"COMBOBOX",
       WS_VISIBLE | WS_VSCROLL | WS_TABSTOP | CBS_DROPDOWNLIST | CBS_OWNERDRAWFIXED | CBS_HASSTRINGS,
       id},
      font);
  SetWindowSubclass(combo, ComboProcedure, kSubclass, 0);
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

bool IsCustomCombo(UINT id) {
  return std::any_of(std::begin(kDropRows), std::end(kDropRows),
                     [id](const DropRow& row) { return row.id == static_cast<int>(id); });
}

void DrawComboItem(const DRAWITEMSTRUCT& item) {
  if (item.itemID == static_cast<UINT>(-1)) return;
  // The closed field, which some systems draw past the control's own paint, looks as DrawField leaves
  // it.
  const bool isField = (item.itemState & ODS_COMBOBOXEDIT) != 0;
  const bool isSelected = (item.itemState & ODS_SELECTED) != 0;
  const ComboRow kind = isField ? ComboRow::kField : isSelected ? ComboRow::kSelected : ComboRow::kPlain;
  const Rect place = FromRECT(item.rcItem);
  GdiCanvas canvas(item.hDC, CurrentFonts(), place);
  PaintComboRow(canvas, ContextOf(item.hwndItem), place, ItemText(item.hwndItem, item.itemID), kind);
}

void PlaceCombo(HWND combo, const Rect& field, bool isShown) {
  if (!IsWindow(combo) || IsInPlace(combo, field, isShown)) return;
  SetComboItemHeights(combo, App().systemDpi);
  SetWindowPos(combo, nullptr, field.left, field.top, field.right - field.left, Scaled(kWithList),
               SWP_NOZORDER | SWP_NOACTIVATE | (isShown ? SWP_SHOWWINDOW : SWP_HIDEWINDOW));
  FitComboHeight(combo, field.bottom - field.top);
}

}  // namespace quilmark
