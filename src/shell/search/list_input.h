// What a mouse does to the rows of the list. Interface thread.
#pragma once

#include <cstdint>

#include "shell/search/list_layout.h"
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

// Whole steps of a wheel whose notch is 120 of `turned`; what is left is kept in `rest`, so that a
// touchpad's small turns add up.
int TakeTurn(int& rest, int64_t turned);

// A wheel's turn in the list; `delta` 120 a notch, positive away from the user.
Effects ScrollByWheel(SearchView& view, const ViewContext& context, int delta);
Effects ScrollSideways(SearchView& view, const ViewContext& context, int delta);

// Where the thumb goes for a press or a move of the held button on a bar.
Effects MoveThumb(SearchView& view, const ViewContext& context, Point cursor);

}  // namespace quilmark
