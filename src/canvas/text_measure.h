// How wide texts are, in the fonts in force.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "canvas/fonts.h"

namespace quilmark {

// Lives as long as the window. Widths and heights are pixels at the window's own scale. Interface
// thread, unless an implementation says otherwise.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;

  // Width of the whole text in one line; 0 for an empty one.
  virtual int WidthOf(FontRole font, std::u16string_view text) const = 0;

  // Height of a line of that font; at least 1.
  virtual int LineHeight(FontRole font) const = 0;

  // How many units of the text's beginning are at most `width` wide; never more than there are.
  virtual size_t UnitsWithin(FontRole font, std::u16string_view text, int width) const = 0;

  // A number that changes whenever the answers may have changed: what was measured under another one is
  // stale.
  virtual uint32_t Version() const = 0;
};

}  // namespace quilmark
