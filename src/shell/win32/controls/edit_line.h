// The one line of an edit.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace quilmark {

// A hidden edit that takes `longest` units from the user; 0: as many as the system allows. Null where
// the system makes none.
HWND MakeEdit(HWND parent, int id, DWORD style, size_t longest, HFONT font);

// The text of an edit, cut to as many units as it takes from a user.
std::u16string TextOfEdit(HWND edit);

// Puts the line into the middle of the control. To be called after each change of its size or font,
// which puts the line back to the top. Insets are pixels at 96 dpi.
void CentreEditLine(HWND edit, int leftInset, int rightInset, uint32_t dpi);

// The same with the insets that all fields have.
void CentreField(HWND edit, uint32_t dpi);

}  // namespace quilmark
