// A menu as data: what it offers, and where it opens.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/rect.h"

namespace quilmark {

// An entry of a menu. One without text is a line between others, one with rows opens them as a menu.
struct MenuRow {
  uint16_t id = 0;  // the command that a choice gives; 0: none
  std::u16string text;
  bool isEnabled = true, isChecked = false;
  std::vector<MenuRow> rows;

  bool operator==(const MenuRow&) const = default;
};

// The text as a menu of the system takes it: an ampersand would mark a key, so each is doubled.
std::u16string MenuLabel(std::u16string_view text);

// A menu that opens at a place of the client area.
struct Menu {
  std::vector<MenuRow> rows;
  Point at;
};

}  // namespace quilmark
