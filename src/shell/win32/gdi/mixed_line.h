// A line of text of which a part runs from right to left.
#pragma once

#include <usp10.h>
#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "canvas/line_marks.h"

namespace quilmark {

// True if some units run from right to left (Hebrew, Arabic and related scripts), so that the order on
// the screen may be another.
bool RunsRightToLeft(std::u16string_view text);

// A line laid out in the font that is selected on a device context. What it draws stands where SpansOf
// says, which the other calls of the system do not promise of such text.
class MixedLine {
 public:
  // `dc` outlives it, and `line` need not.
  MixedLine(HDC dc, const std::u16string& line);
  ~MixedLine();
  MixedLine(const MixedLine&) = delete;
  MixedLine& operator=(const MixedLine&) = delete;

  // False where the system cannot lay it out: then the other calls must not be made.
  bool IsReady() const { return analysis_ != nullptr; }

  // Draws it with its left upper corner there.
  void Draw(int left, int top) const;

  // Its width in pixels.
  int Width() const;

  // What the ranges cover, from left to right, in pixels from the left edge of the line.
  std::vector<PixelSpan> SpansOf(const std::vector<TextRange>& ranges) const;

 private:
  PixelSpan PlaceOf(size_t unit) const;

  SCRIPT_STRING_ANALYSIS analysis_ = nullptr;
  size_t length_ = 0;
};

}  // namespace quilmark
