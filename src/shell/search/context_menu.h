// What the menu of the list offers.
#pragma once

#include <vector>

#include "shell/search/columns.h"
#include "shell/view/menu.h"

namespace quilmark {

// What the entries follow from.
struct ContextMenuState {
  bool hasRow = false;  // the click has hit a row; without one its entries are greyed
  ViewMode view = ViewMode::kList;
  bool sidebarLayout = false;
};

// The entries, in the interface's language; their commands are those of commands.h.
std::vector<MenuRow> ContextMenuRows(const ContextMenuState& state);

}  // namespace quilmark
