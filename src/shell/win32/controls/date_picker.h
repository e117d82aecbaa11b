// A field for a day, painted in the palette, with the system's calendar to drop down.
#pragma once

#include <windows.h>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

// A hidden field that shows today. `host` outlives it. Null where the system makes none.
HWND MakeDatePicker(HWND parent, int id, ControlHost& host);

// Gives the calendar that has just dropped down the colours of the palette and the room that it needs.
void StyleDatePicker(HWND picker, ControlHost& host);

// The day that the field shows, as year * 10,000 + month * 100 + day; 0 where there is none.
int DayOf(HWND picker);

// Shows a day of that form; 0, or a day that is none, changes nothing.
void SetDay(HWND picker, int day);

}  // namespace quilmark
