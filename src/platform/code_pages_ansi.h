// The system's part of code_pages.h, for its implementation alone.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

// True where the ANSI code page is UTF-8: a setting of newer Windows.
bool AnsiIsUtf8();

// The bytes of `text` in the ANSI code page, which is not UTF-8; empty where a character has no form of
// its own.
[[nodiscard]] std::optional<std::string> EncodeAnsi(std::u16string_view text);

}  // namespace quilmark
