// Widths of texts from a table: the same on every system, and without a window.
#pragma once

#include "canvas/text_measure.h"

namespace quilmark {

// Widths as the fonts under Wine have them, at any scale. Any thread; it keeps no state.
class TableMeasure : public TextMeasure {
 public:
  // `percent`: of the table's widths, for fonts that run wider or narrower.
  explicit TableMeasure(uint32_t dpi, int percent = 100) : dpi_(dpi), percent_(percent) {}

  int WidthOf(FontRole font, std::u16string_view text) const override;
  int LineHeight(FontRole font) const override;
  size_t UnitsWithin(FontRole font, std::u16string_view text, int width) const override;
  uint32_t Version() const override { return dpi_; }

 private:
  int AdvanceOf(FontRole font, char16_t unit) const;

  uint32_t dpi_;
  int percent_;
};

}  // namespace quilmark
