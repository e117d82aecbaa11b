// How wide characters are in the fonts that the window has under Wine, for measuring without a window.
#pragma once

#include <cstdint>
#include <span>

namespace quilmark {

// Parts of the letters' height that make a whole.
inline constexpr int64_t kAdvanceParts = 256'000;

// How far letters reach above and below their line.
struct FontHeight {
  int32_t ascent, descent;  // parts
};

// Of all fonts of the window, which share it.
extern const FontHeight kTextHeight;

// Units in a row that are equally wide.
struct AdvanceRun {
  char16_t first;   // the run ends where the next one begins
  int32_t advance;  // parts; -1: another font has them
};
// Runs from unit 0 on, ascending. kLinkedAdvances has the widths of units that the regular and the bold
// font lack; a unit that it lacks too is as wide as an ideograph.
extern const std::span<const AdvanceRun> kRegularAdvances, kBoldAdvances, kLinkedAdvances;

}  // namespace quilmark
