// What of a month calendar cannot be read in the colours it has.
#pragma once

#include <windows.h>

#include "config/palette.h"

namespace quilmark {

// Draws the names of the weekdays and the chosen day over: the system draws both in the colour of a
// ground, which is that of the whole calendar here. For each time it has painted.
void DrawCalendarLetters(HWND calendar, const Palette& palette);

}  // namespace quilmark
