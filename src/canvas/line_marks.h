// Where the marked parts of a text stand in the lines that it is drawn in.
#pragma once

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

#include "canvas/canvas.h"

namespace quilmark {

// The hits, or their parts, that stand in the line of `length` units from `begin`. The ranges that come
// back are counted from `begin`.
std::vector<TextRange> RangesOfLine(std::span<const TextRange> hits, size_t begin, size_t length);

// From one place of a line of the screen to another, in pixels.
struct PixelSpan {
  int left = 0, right = 0;

  bool operator==(const PixelSpan&) const = default;
};

// Joins the spans of single units to those of whole stretches, from left to right. `left` of a unit may
// lie right of its `right`, as in text from right to left. Units that touch give one span, and a unit
// without a width gives none.
std::vector<PixelSpan> JoinSpans(std::vector<PixelSpan> units);

// How many units of `text` are seen in `shown`, which is `text` with an ellipsis in place of its end:
// the units that both begin with.
size_t ShownUnits(std::u16string_view text, std::u16string_view shown);

// How many units of the text make its first line where `fitting` of them have room: up to a blank where
// there is one, and never half a character. At least 1.
size_t LineLength(std::u16string_view text, size_t fitting);

// How many units of a line stand before the blanks at its end, which need no room.
size_t InkLength(std::u16string_view line);

}  // namespace quilmark
