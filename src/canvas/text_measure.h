// How wide texts are, in the fonts in force.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "canvas/fonts.h"

namespace quilmark {

// Lives as long as the window. Pixels at the window's own scale.
class TextMeasure {
 public:
  virtual ~TextMeasure() = default;

  virtual int WidthOf(FontRole font, std::u16string_view text) const = 0;
  virtual int LineHeight(FontRole font) const = 0;  // at least 1

  // Units of the text's beginning that are at most `width` wide, never more than there are.
  virtual size_t UnitsWithin(FontRole font, std::u16string_view text, int width) const = 0;

  // Another number whenever the answers may have changed.
  virtual uint32_t Version() const = 0;
};

}  // namespace quilmark
