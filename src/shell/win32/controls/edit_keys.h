// What all one-line fields share. They are multi-line edits, whose rectangle of text can be centred, and
// which know no line but the first.
#pragma once

#include <windows.h>

#include <optional>

namespace quilmark {

// Tab goes to the next control and Shift+Tab to the one before. True if the message was that key.
bool TakeTabKey(HWND control, UINT message, WPARAM wParam);

// Keys, characters and a paste of a field. Empty: not taken.
std::optional<LRESULT> TakeEditMessage(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);

}  // namespace quilmark
