// Text as bytes of a code page.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

// kAnsi is the system's ANSI code page on Windows, and 1252 on a POSIX host.
enum class CodePage { kUtf8, kAnsi };

// Writes the units of `bytes`, which are text in kAnsi, to `out`, which has room for one a byte. Their
// number; 0 where the system converts nothing.
[[nodiscard]] size_t AnsiToUnits(std::string_view bytes, char16_t* out);

// The bytes of `text`; empty where a character has no form in the code page.
[[nodiscard]] std::optional<std::string> EncodeText(std::u16string_view text, CodePage page);

// The bytes of `text` in kAnsi as WideCharToMultiByte gives them for code page 0 without flags: where a
// character has no form of its own stands a look-alike or the default character, which is "?" on a POSIX
// host. Empty for no text, and where the system converts nothing.
[[nodiscard]] std::string EncodeAnsiLossy(std::u16string_view text);

}  // namespace quilmark
