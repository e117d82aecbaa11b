#include "shell/search/tip_text.h"

#include "search/results/search_session.h"
#include "search/sort/sort.h"
#include "shell/list/cell_text.h"
#include "shell/search/row_cells.h"
#include "shell/search/row_text.h"

namespace quilmark {

Tip TipOfCell(ViewMode view, int64_t row, int column) {
  const auto rows = ShownResults();
  if (row < 0 || static_cast<uint64_t>(row) >= rows->size()) return {};
  const MatchItem& hit = (*rows)[static_cast<size_t>(row)];
  if (view != ViewMode::kList || column == kColumnName || column == kColumnOfPath) {
    return {.text = PathOfRow(TextOfRow(hit))};
  }
  if (column < kColumnSize) return {};
  const RowCells cells = CellsOfRow(hit);
  const std::u16string& text = column == kColumnSize       ? cells.size
                               : column == kColumnModified ? cells.modified
                                                           : cells.created;
  const bool isUnknown = text == kNotKnownYet;
  return {.text = isUnknown || text == kAbsent ? std::u16string() : text, .isMissing = isUnknown};
}

}  // namespace quilmark
