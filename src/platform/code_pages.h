// Text as bytes of a code page.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

// kAnsi is the system's ANSI code page on Windows, and 1252 on a POSIX host.
enum class CodePage { kUtf8, kAnsi };

// The bytes of `text`; empty where a character has no form in the code page.
[[nodiscard]] std::optional<std::string> EncodeText(std::u16string_view text, CodePage page);

}  // namespace quilmark
