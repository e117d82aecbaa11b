// The rows of the results as they are painted, in all three views, and the header above them.
// Interface thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/list/list_colors.h"
#include "shell/list/list_view.h"
#include "shell/search/row_cells.h"
#include "shell/search/row_text.h"

namespace quilmark {

struct SearchView;

// As the settings and the view are at each call.
class ResultRows final : public ListSource {
 public:
  explicit ResultRows(const SearchView& view) : view_(view) {}

  uint64_t Count() const override;
  PaintOutcome Read(uint64_t first, uint64_t end) override;
  void PaintRow(Canvas& canvas, uint64_t row, const RowPlace& place,
                const ViewContext& context) const override;

 private:
  struct ReadRow {
    RowText text;
    RowCells cells;
  };

  const SearchView& view_;
  uint64_t first_ = 0;  // of the rows that were read
  std::vector<ReadRow> read_;
  std::u16string term_;  // folded, to be marked in names
};

// The columns over the rows; nothing in the icon views.
void PaintHeader(Canvas& canvas, const ViewContext& context, const SearchView& view,
                 const ListColors& colors);

}  // namespace quilmark
