// What a press on a row does to the selection. Interface thread.
#pragma once

#include <cstdint>

#include "shell/search/search_view.h"

namespace quilmark {

// A left press of the mouse in the list.
struct RowPress {
  int64_t row = -1;           // -1: beside the rows
  bool isNameColumn = false;  // true for every press in the icon views
  bool shift = false, ctrl = false;
  uint64_t nowMs = 0;
};

// What a press has changed.
enum class PressOutcome { kNothing, kSelected, kRename };

// Selects by a press. Two slow clicks on a name that has the focus give kRename.
[[nodiscard]] PressOutcome PressRow(ListState& list, const RowPress& press);

// The second press of a double click on a row: the row has the focus, and no click that follows renames
// it.
void DoublePressRow(ListState& list, int64_t row);

}  // namespace quilmark
