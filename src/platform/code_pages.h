// Text as bytes of a code page.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

enum class CodePage { kUtf8, kAnsi };  // kAnsi: the system's ANSI code page on Windows, 1252 on POSIX

// The bytes of `text`; empty where a character has no form in the code page.
std::optional<std::string> EncodeText(std::u16string_view text, CodePage page);

}  // namespace quilmark
