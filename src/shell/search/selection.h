// Which rows of the list are chosen. Interface thread.
#pragma once

#include <cstdint>
#include <vector>

#include "shell/search/row_set.h"

namespace quilmark {

// The chosen rows, by their numbers in the shown set.
struct Selection {
  RowSet rows;
  int64_t focusRow = -1;   // -1: none
  int64_t anchorRow = -1;  // where a range begins; -1: none
};

// Chooses no row, and forgets focus and anchor.
void ClearSelection(Selection& selection);

// Chooses one row, which has focus and anchor.
void SelectOnly(Selection& selection, int64_t row);

// Gives the focus to a chosen row; chooses any other alone.
void JoinSelection(Selection& selection, int64_t row);

// Chooses a row that was not chosen, and the other way round. It gets focus and anchor unless no row is
// chosen any more.
void SelectToggle(Selection& selection, int64_t row);

// Chooses the rows from the anchor to this one alone. Without an anchor this row becomes it.
void SelectRange(Selection& selection, int64_t row);

// The chosen rows of a list of `rowCount`, ascending. Where none is chosen, the row that has the focus.
std::vector<uint64_t> SelectedRows(const Selection& selection, uint64_t rowCount);

}  // namespace quilmark
