// What the one-line fields do with text. Units of UTF-16.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quilmark {

// The first line that is not blank, without tabs: what a field takes of a text that is pasted.
std::u16string FirstLine(std::u16string_view text);

// Where the word before `caret` begins, with the blanks behind it.
size_t WordStart(std::u16string_view text, size_t caret);

}  // namespace quilmark
