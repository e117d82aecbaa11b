// A field for a day, painted in the palette, with the system's calendar to drop down.
#pragma once

#include <windows.h>

#include "shell/win32/controls/control_host.h"

namespace quilmark {

HWND MakeDatePicker(HWND parent, int id, ControlHost& host);

// When its calendar has opened: gives that the colours of the palette and the room it wants.
void StyleDatePicker(HWND picker, ControlHost& host);

// Days as year * 10000 + month * 100 + day; 0: none.
int DayOf(HWND picker);
void SetDay(HWND picker, int day);

}  // namespace quilmark
