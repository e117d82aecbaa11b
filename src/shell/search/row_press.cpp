#include "shell/search/row_press.h"

namespace quilmark {

namespace {

constexpr uint64_t kLeastRenameMs = 500, kMostRenameMs = 1'200;

bool IsSlowSecondClick(const ListState& list, const RowPress& press) {
  const uint64_t passed = press.nowMs - list.lastClickMs;
  return press.isNameColumn && press.row == list.lastClickRow && press.row == list.selection.focusRow &&
         passed >= kLeastRenameMs && passed <= kMostRenameMs;
}

void SelectByPress(Selection& selection, const RowPress& press) {
  const bool isInSet =
      selection.rows.size() > 1 && selection.rows.contains(static_cast<uint64_t>(press.row));
  if (press.shift) return SelectRange(selection, press.row);
  if (press.ctrl) return SelectToggle(selection, press.row);
  if (!isInSet) return SelectOnly(selection, press.row);
  // The set stays, so that it can be dragged.
  selection.focusRow = selection.anchorRow = press.row;
}

}  // namespace

PressOutcome PressRow(ListState& list, const RowPress& press) {
  if (press.row < 0) {
    if (press.shift || press.ctrl) return PressOutcome::kNothing;
    ClearSelection(list.selection);
    return PressOutcome::kSelected;
  }
  if (IsSlowSecondClick(list, press)) {
    list.lastClickRow = -1;
    return PressOutcome::kRename;
  }
  SelectByPress(list.selection, press);
  list.lastClickRow = press.isNameColumn ? press.row : -1;
  list.lastClickMs = press.nowMs;
  return PressOutcome::kSelected;
}

void DoublePressRow(ListState& list, int64_t row) {
  list.selection.focusRow = row;
  list.lastClickRow = -1;
}

}  // namespace quilmark
