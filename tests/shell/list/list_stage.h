// A list without a window: where it is shown, and rows that are only numbers.
#pragma once

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>
#include <vector>

#include "canvas/table_measure.h"
#include "shell/list/list_colors.h"
#include "shell/list/list_view.h"
#include "shell/view/silent_window.h"
#include "support/recording_canvas.h"

namespace quilmark {

// What a view needs to know, at a scale and with fonts as wide as the table's or wider.
struct ListStage {
  uint32_t dpi = 96;
  int percent = 100;
  Rect client = {0, 0, 400, 300};
  Palette palette = ThemeDefaults(false);
  TableMeasure fonts{dpi, percent};
  mutable SilentWindow window = {};

  ViewContext Context() const {
    return {.dpi = dpi, .client = client, .palette = palette, .fonts = fonts, .window = window};
  }
  int Scaled(int n) const { return ScaleFor(dpi, n); }
  BarColors Bars() const { return BarColorsOn(palette, palette.surface); }
};

// Rows with their number, in a colour that tells whether they are hovered. Allocates nothing.
class NumberedRows : public ListSource {
 public:
  uint64_t Count() const override { return count; }
  PaintOutcome Read(uint64_t first, uint64_t end) override {
    read = {first, end};
    ++reads;
    return outcome;
  }
  PaintOutcome PaintRow(Canvas& canvas, uint64_t row, const RowPlace& place,
                        const ViewContext& context) const override {
    if (row < read.first || row >= read.end) ++unread;
    ++painted;
    if (place.isHovered) canvas.FillRound(place.row, context.Scaled(8), context.palette.accentSoft);
    char16_t digits[20];
    size_t first = std::size(digits);
    for (uint64_t rest = row; first == std::size(digits) || rest > 0; rest /= 10) {
      digits[--first] = static_cast<char16_t>(u'0' + rest % 10);
    }
    const Rect& at = place.row;
    canvas.Text({at.left + 4 - place.shift, at.top, at.right - place.shift + 600, at.bottom},
                {digits + first, std::size(digits) - first}, {.color = context.palette.text});
    return outcomeOfRows;
  }

  uint64_t count = 100;
  PaintOutcome outcome, outcomeOfRows;
  RowSpan read;
  int reads = 0;
  mutable int painted = 0, unread = 0;
};

}  // namespace quilmark
