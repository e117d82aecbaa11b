// The letters of a month calendar that cannot be read in the colours that the system gives them.
#pragma once

#include <windows.h>

#include "config/palette.h"

namespace quilmark {

// Draws the names of the weekdays and the chosen day again: the system draws both in the colour of a
// ground, which is that of the whole calendar here. To be called each time the calendar has painted.
void DrawCalendarLetters(HWND calendar, const Palette& palette);

}  // namespace quilmark
