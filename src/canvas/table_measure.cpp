#include "canvas/table_measure.h"

#include <algorithm>

#include "canvas/scale.h"
#include "canvas/text_advances.h"

namespace quilmark {

namespace {

constexpr int kBoldFrom = 550;  // weights below it are drawn in the regular face

// Rounds to 64ths of a pixel first, and from these to pixels, as font engines do it.
int Rounded(int64_t advance, int height) {
  constexpr int64_t kParts = 64;
  const int64_t parts = (advance * height * kParts + kAdvanceParts / 2) / kAdvanceParts;
  return static_cast<int>((parts + kParts / 2) / kParts);
}

int64_t AdvanceIn(std::span<const AdvanceRun> runs, char16_t unit) {
  const auto next =
      std::upper_bound(runs.begin(), runs.end(), unit,
                       [](char16_t one, const AdvanceRun& run) { return one < run.first; });
  return std::prev(next)->advance;
}

bool IsSecondHalf(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

}  // namespace

// Each character by itself is rounded to whole pixels, as the system does it.
int TableMeasure::AdvanceOf(FontRole font, char16_t unit) const {
  if (IsSecondHalf(unit)) return 0;
  const bool isBold = RowOf(font).weight >= kBoldFrom;
  int64_t advance = AdvanceIn(isBold ? kBoldAdvances : kRegularAdvances, unit);
  if (advance < 0) advance = AdvanceIn(kLinkedAdvances, unit);
  return Rounded(advance * percent_ / 100, ScaleFor(dpi_, RowOf(font).height));
}

int TableMeasure::WidthOf(FontRole font, std::u16string_view text) const {
  int width = 0;
  for (const char16_t unit : text) width += AdvanceOf(font, unit);
  return width;
}

int TableMeasure::LineHeight(FontRole font) const {
  const int height = ScaleFor(dpi_, RowOf(font).height);
  return std::max(Rounded(kTextHeight.ascent, height) + Rounded(kTextHeight.descent, height), 1);
}

size_t TableMeasure::UnitsWithin(FontRole font, std::u16string_view text, int width) const {
  for (size_t units = 0; units < text.size(); ++units) {
    width -= AdvanceOf(font, text[units]);
    if (width < 0) return units;
  }
  return text.size();
}

}  // namespace quilmark
