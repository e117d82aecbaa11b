// The one line of an edit.
#pragma once

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <string>

namespace quilmark {

// A new edit with its limit; 0: as much as the system lets it take.
HWND MakeEdit(HWND parent, int id, DWORD style, size_t longest, HFONT font);

// No more units than it takes from a user.
std::u16string TextOfEdit(HWND edit);

// Puts the line into the middle of the control; after each change of its size or font, which put it back
// to the top. Insets in pixels at 96 dpi.
void CentreEditLine(HWND edit, int leftInset, int rightInset, uint32_t dpi);

// With the insets of a field.
void CentreField(HWND edit, uint32_t dpi);

}  // namespace quilmark
