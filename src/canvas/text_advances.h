// How wide characters are in the fonts that the window has under Wine, for measuring without a window.
#pragma once

#include <cstdint>
#include <span>

namespace quilmark {

// Thousandths of the letters' height.
struct FontHeight {
  uint16_t ascent, descent;
};
extern const FontHeight kTextHeight;

struct AdvanceRun {
  uint16_t first;    // UTF-16 unit; the run ends where the next one begins
  uint16_t advance;  // thousandths of the letters' height
};
// From 0 on, ascending.
extern const std::span<const AdvanceRun> kRegularAdvances, kBoldAdvances;

}  // namespace quilmark
