// What all one-line fields share. They are multi-line edits, whose rectangle of text can be centred, and
// which know no line but the first.
#pragma once

#include <windows.h>

#include <optional>

namespace quilmark {

// Whether a message of a key that went down comes from one that is held.
constexpr bool IsRepeat(LPARAM keyState) { return (keyState >> 30 & 1) != 0; }

// Moves the focus to the next control by Tab, and to the one before by Shift+Tab. True if the message
// was that key, which nothing else may answer then.
[[nodiscard]] bool TakeTabKey(HWND control, UINT message, WPARAM wParam);

// Answers keys, characters and a paste of a one-line field. Empty where the edit itself is to answer.
[[nodiscard]] std::optional<LRESULT> TakeEditMessage(HWND edit, UINT message, WPARAM wParam,
                                                     LPARAM lParam);

}  // namespace quilmark
