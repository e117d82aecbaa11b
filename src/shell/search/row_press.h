// What a press on a row does to the choice. Interface thread.
#pragma once

#include <cstdint>

#include "shell/search/search_view.h"

namespace quilmark {

struct RowPress {
  int64_t row = -1;           // -1: beside the rows
  bool isNameColumn = false;  // true for every press in the icon views
  bool shift = false, ctrl = false;
  uint64_t nowMs = 0;
};

enum class PressOutcome { kNothing, kSelected, kRename };

// A left press in the list. Two slow clicks on a name that has the focus ask for its rename.
PressOutcome PressRow(ListState& list, const RowPress& press);

// The second press of a double click on a row: it takes the focus, and no click that follows renames it.
void DoublePressRow(ListState& list, int64_t row);

}  // namespace quilmark
