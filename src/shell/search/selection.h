// Which rows of the list are chosen. Interface thread.
#pragma once

#include <cstdint>
#include <vector>

#include "shell/search/row_set.h"

namespace quilmark {

struct Selection {
  RowSet rows;
  int64_t focusRow = -1;   // -1: none
  int64_t anchorRow = -1;  // where a range begins; -1: none
};

void ClearSelection(Selection& selection);
void SelectOnly(Selection& selection, int64_t row);

// In if it was out, and out if it was in.
void SelectToggle(Selection& selection, int64_t row);

// From the anchor to the row.
void SelectRange(Selection& selection, int64_t row);

// Ascending, within a list of `rowCount`; the row that has the focus where none is chosen.
std::vector<uint64_t> SelectedRows(const Selection& selection, uint64_t rowCount);

}  // namespace quilmark
