#include "shell/selection.h"

#include <algorithm>

namespace quilmark {

void ClearSelection(Selection& selection) { selection = {}; }

void SelectOnly(Selection& selection, int64_t row) {
  selection.rows.clear();
  selection.rows.insert(static_cast<uint64_t>(row));
  selection.focusRow = selection.anchorRow = row;
}

void SelectToggle(Selection& selection, int64_t row) {
  const auto key = static_cast<uint64_t>(row);
  if (selection.rows.erase(key) == 0) selection.rows.insert(key);
  selection.focusRow = selection.anchorRow = selection.rows.empty() ? -1 : row;
}

void SelectRange(Selection& selection, int64_t row) {
  if (selection.anchorRow == -1) selection.anchorRow = row;
  const auto [first, last] = std::minmax(selection.anchorRow, row);
  selection.rows.clear();
  selection.rows.reserve(static_cast<size_t>(last - first) + 1);
  for (int64_t i = first; i <= last; ++i) selection.rows.insert(static_cast<uint64_t>(i));
  selection.focusRow = row;
}

std::vector<uint64_t> SelectedRows(const Selection& selection, uint64_t rowCount) {
  std::vector<uint64_t> rows;
  for (const uint64_t row : selection.rows) {
    if (row < rowCount) rows.push_back(row);
  }
  std::sort(rows.begin(), rows.end());
  const auto focus = static_cast<uint64_t>(selection.focusRow);
  if (rows.empty() && selection.focusRow >= 0 && focus < rowCount) rows.push_back(focus);
  return rows;
}

}  // namespace quilmark
