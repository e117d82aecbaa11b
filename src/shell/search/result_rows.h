// The rows of the results as they are painted, in all three views, and the header above them.
// Interface thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/list/list_colors.h"
#include "shell/list/list_view.h"
#include "shell/search/row_cells.h"
#include "shell/search/row_icons.h"
#include "shell/search/row_text.h"
#include "shell/search/seen_rows.h"

namespace quilmark {

struct SearchView;

// The rows of the shown set, by the settings and the state of the view at each call.
class ResultRows final : public ListSource {
 public:
  // `view` outlives the rows, and is not looked at before the first call.
  explicit ResultRows(const SearchView& view) : view_(view) {}

  uint64_t Count() const override;
  PaintOutcome Read(uint64_t first, uint64_t end) override;
  // The set that was read last, as it was when it was read first.
  const SeenRows& Seen() const { return seen_; }

  PaintOutcome PaintRow(Canvas& canvas, uint64_t row, const RowPlace& place,
                        const ViewContext& context) const override;

 private:
  struct ReadRow {
    RowText text;
    RowCells cells;
  };

  RowIcon IconOf(const RowText& row, const ViewContext& context, int size) const;

  const SearchView& view_;
  SeenRows seen_;
  bool showsChoice_ = true;  // the chosen rows are numbers of that set
  uint64_t first_ = 0;       // of the rows that were read
  std::vector<ReadRow> read_;
  std::u16string term_;          // folded, to be marked in names
  mutable std::u16string path_;  // of the row that is painted: its memory serves the next one
};

// Paints the header over the columns; nothing in the icon views.
void PaintHeader(Canvas& canvas, const ViewContext& context, const SearchView& view,
                 const ListColors& colors);

}  // namespace quilmark
