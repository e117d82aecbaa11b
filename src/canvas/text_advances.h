// How wide characters are in the fonts that the window has under Wine, for measuring without a window.
#pragma once

#include <cstdint>
#include <span>

namespace quilmark {

// Parts of the letters' height that make a whole.
inline constexpr int64_t kAdvanceParts = 256'000;

struct FontHeight {
  int32_t ascent, descent;  // parts
};
extern const FontHeight kTextHeight;

struct AdvanceRun {
  char16_t first;   // the run ends where the next one begins
  int32_t advance;  // parts; -1: another font has them
};
// From 0 on, ascending. The last: what the two before it lack, as wide as an ideograph where nobody has
// it.
extern const std::span<const AdvanceRun> kRegularAdvances, kBoldAdvances, kLinkedAdvances;

}  // namespace quilmark
