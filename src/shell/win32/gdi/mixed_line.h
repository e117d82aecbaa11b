// A line of which some runs from right to left.
#pragma once

#include <usp10.h>
#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

#include "canvas/line_marks.h"

namespace quilmark {

// True if the units need not stand in the order of the screen: Hebrew, Arabic and their neighbours.
bool RunsRightToLeft(std::u16string_view text);

// The line laid out in the selected font. What it draws stands where it says, which the other calls of
// the system do not promise of such text.
class MixedLine {
 public:
  MixedLine(HDC dc, const std::u16string& line);
  ~MixedLine();
  MixedLine(const MixedLine&) = delete;
  MixedLine& operator=(const MixedLine&) = delete;

  bool IsReady() const { return analysis_ != nullptr; }  // false where the system cannot lay it out
  void Draw(int left, int top) const;
  int Width() const;  // pixels

  // What some ranges cover, from left to right, in pixels from the line's beginning.
  std::vector<PixelSpan> SpansOf(const std::vector<TextRange>& ranges) const;

 private:
  PixelSpan PlaceOf(size_t unit) const;

  SCRIPT_STRING_ANALYSIS analysis_ = nullptr;
  size_t length_ = 0;
};

}  // namespace quilmark
