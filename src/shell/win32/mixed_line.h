// Where units of a line stand on the screen, also where some of it runs from right to left.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "shell/highlight.h"

namespace quilmark {

// True if the units need not stand in the order of the screen: Hebrew, Arabic and their neighbours.
bool RunsRightToLeft(const std::u16string& text);

// What some ranges of a line cover in the selected font, from left to right, in pixels from the line's
// beginning. Empty where the system does not tell.
std::vector<PixelSpan> SpansOnLine(HDC dc, const std::u16string& line,
                                   const std::vector<TextRange>& ranges);

}  // namespace quilmark
