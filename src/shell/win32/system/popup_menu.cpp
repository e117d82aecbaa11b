#include "shell/win32/system/popup_menu.h"

#include <string>

#include "platform/win32/unique.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

// Destroys the menus that open from its entries too.
struct MenuTraits {
  using Value = HMENU;
  static Value Empty() { return nullptr; }
  static void Close(Value menu) { DestroyMenu(menu); }
};
using UniqueMenu = Unique<MenuTraits>;

// The system takes a single & for the mark of a key.
std::u16string Literal(const std::u16string& text) {
  std::u16string doubled;
  for (const char16_t unit : text) doubled.append(unit == u'&' ? 2 : 1, unit);
  return doubled;
}

UniqueMenu MakeMenu(std::span<const MenuRow> rows);

void Append(HMENU menu, const MenuRow& row) {
  if (row.text.empty()) {
    AppendMenuW(menu, MF_SEPARATOR, 0, nullptr);
    return;
  }
  const UINT flags =
      MF_STRING | (row.isEnabled ? MF_ENABLED : MF_GRAYED) | (row.isChecked ? MF_CHECKED : MF_UNCHECKED);
  const std::u16string text = Literal(row.text);
  if (row.rows.empty()) {
    AppendMenuW(menu, flags, row.id, Wide(text));
    return;
  }
  UniqueMenu inner = MakeMenu(row.rows);
  if (!inner) return;
  if (AppendMenuW(menu, flags | MF_POPUP, reinterpret_cast<UINT_PTR>(inner.Get()), Wide(text))) {
    inner.Release();  // the outer one destroys it from now on
  }
}

UniqueMenu MakeMenu(std::span<const MenuRow> rows) {
  UniqueMenu menu(CreatePopupMenu());
  if (!menu) return menu;
  for (const MenuRow& row : rows) Append(menu.Get(), row);
  return menu;
}

}  // namespace

uint16_t TrackMenu(HWND owner, POINT place, std::span<const MenuRow> rows) {
  const UniqueMenu menu = MakeMenu(rows);
  if (!menu) return 0;
  return static_cast<uint16_t>(
      TrackPopupMenu(menu.Get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, place.x, place.y, 0, owner, nullptr));
}

}  // namespace quilmark
