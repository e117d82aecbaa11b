#include "shell/search/selection.h"

#include <algorithm>

namespace quilmark {

void ClearSelection(Selection& selection) { selection = {}; }

void SelectOnly(Selection& selection, int64_t row) {
  selection.rows.assign(static_cast<uint64_t>(row), static_cast<uint64_t>(row));
  selection.focusRow = selection.anchorRow = row;
}

void JoinSelection(Selection& selection, int64_t row) {
  if (!selection.rows.contains(static_cast<uint64_t>(row))) return SelectOnly(selection, row);
  selection.focusRow = row;
}

void SelectToggle(Selection& selection, int64_t row) {
  const auto key = static_cast<uint64_t>(row);
  if (!selection.rows.erase(key)) selection.rows.insert(key);
  selection.focusRow = selection.anchorRow = selection.rows.empty() ? -1 : row;
}

void SelectRange(Selection& selection, int64_t row) {
  if (selection.anchorRow == -1) selection.anchorRow = row;
  const auto [first, last] = std::minmax(selection.anchorRow, row);
  selection.rows.assign(static_cast<uint64_t>(first), static_cast<uint64_t>(last));
  selection.focusRow = row;
}

std::vector<uint64_t> SelectedRows(const Selection& selection, uint64_t rowCount) {
  std::vector<uint64_t> rows;
  for (const auto& [first, end] : selection.rows.Stretches()) {
    for (uint64_t row = first; row < std::min(end, rowCount); ++row) rows.push_back(row);
  }
  const auto focus = static_cast<uint64_t>(selection.focusRow);
  if (rows.empty() && selection.focusRow >= 0 && focus < rowCount) rows.push_back(focus);
  return rows;
}

}  // namespace quilmark
