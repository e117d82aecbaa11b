#include "shell/win32/system/popup_menu.h"

#include "platform/win32/unique.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

struct MenuTraits {
  using Value = HMENU;
  static Value Empty() { return nullptr; }
  static void Close(Value menu) { DestroyMenu(menu); }
};
using UniqueMenu = Unique<MenuTraits>;

UniqueMenu MakeMenu(std::span<const MenuRow> rows);

UINT FlagsOf(const MenuRow& row) {
  if (row.text.empty()) return MF_SEPARATOR;
  const UINT state = (row.isEnabled ? MF_ENABLED : MF_GRAYED) | (row.isChecked ? MF_CHECKED : 0u);
  return MF_STRING | state;
}

void Append(HMENU menu, const MenuRow& row) {
  const std::u16string label = MenuLabel(row.text);
  if (row.rows.empty()) {
    AppendMenuW(menu, FlagsOf(row), row.id, Wide(label));
    return;
  }
  UniqueMenu inner = MakeMenu(row.rows);
  const bool isTaken = AppendMenuW(menu, FlagsOf(row) | MF_POPUP,
                                   reinterpret_cast<UINT_PTR>(inner.Get()), Wide(label)) != FALSE;
  if (isTaken) inner.Release();  // it ends with the outer one
}

UniqueMenu MakeMenu(std::span<const MenuRow> rows) {
  UniqueMenu menu(CreatePopupMenu());
  if (menu) {
    for (const MenuRow& row : rows) Append(menu.Get(), row);
  }
  return menu;
}

}  // namespace

uint16_t TrackMenu(HWND owner, POINT screenPoint, std::span<const MenuRow> rows) {
  const UniqueMenu menu = MakeMenu(rows);
  if (!menu) return 0;
  return static_cast<uint16_t>(TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, screenPoint.x,
                                              screenPoint.y, 0, owner, nullptr));
}

}  // namespace quilmark
