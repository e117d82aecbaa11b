// What the one-line fields do with text. Sizes and places are units of UTF-16.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace quilmark {

// The first line that is not blank, without tabs: what a field takes of a text that is pasted.
std::u16string FirstLine(std::u16string_view text);

// Calls `open` until it gives true, five times at most, with `pause` in between: the clipboard belongs
// to one program at a time, each for a moment. False if `open` never gave true.
[[nodiscard]] bool OpenPatiently(const std::function<bool()>& open, const std::function<void()>& pause);

// Where the word before `caret` begins. Blanks between that word and `caret` belong to it.
size_t WordStart(std::u16string_view text, size_t caret);

}  // namespace quilmark
