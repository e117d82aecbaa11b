// Where the marked parts of a text stand in the lines that it is drawn in.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "canvas/canvas.h"

namespace quilmark {

// The hits, or their parts, that stand in the line of `length` units from `begin`; counted from there.
std::vector<TextRange> RangesOfLine(std::span<const TextRange> hits, size_t begin, size_t length);

// From one place of a line of the screen to another, in pixels.
struct PixelSpan {
  int left = 0, right = 0;

  bool operator==(const PixelSpan&) const = default;
};

// What units cover whose edges are given, in the order of the screen. An edge may be the right one;
// units that touch give one span, and one without a width none.
std::vector<PixelSpan> JoinSpans(std::vector<PixelSpan> units);

// How much of the text is shown where its end had to give way to an ellipsis: the units both begin with.
size_t ShownUnits(std::u16string_view text, std::u16string_view shown);

// Units of the line that begins a text of which `fitting` units fit: up to a blank where there is one,
// and never half a character. At least 1.
size_t LineLength(std::u16string_view text, size_t fitting);

// Units of a line up to the blanks at its end, which need no room.
size_t InkLength(std::u16string_view line);

}  // namespace quilmark
