// Text files as the settings and logs of the program are: UTF-8 with a byte order mark, CR LF at line
// ends; the same bytes on disk on every platform (the "ccs=UTF-8" modes of the Windows runtime).
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quilmark {

// Units of the longest piece that TextLines hands out, its line end included: a buffer of 256 units less
// its NUL.
inline constexpr size_t kTextLineLimit = 255;

// The text of a file's bytes: a UTF-8 mark is skipped, a UTF-16 little-endian mark switches to UTF-16,
// malformed bytes become U+FFFD, CR LF becomes LF.
std::u16string DecodeText(std::string_view bytes);

// Bytes of `text`: LF becomes CR LF, surrogate pairs one sequence of four bytes. No mark.
std::string EncodeTextLines(std::u16string_view text);

// The text of a whole file. Empty if it cannot be read or is longer than ReadFileBytes takes.
[[nodiscard]] std::optional<std::u16string> ReadTextFile(std::u16string_view path);

// What a file with that text holds: a mark, then the lines.
std::string TextFileBytes(std::u16string_view text);

// Rewrites the whole file with a mark in front. False on any failure.
[[nodiscard]] bool WriteTextFile(std::u16string_view path, std::u16string_view text);

// Appends; a new or empty file gets a mark first. False on any failure. The result may be dropped for a
// line of a log.
bool AppendTextFile(std::u16string_view path, std::u16string_view text);

// Position in a decoded text, read line by line with a limit: a longer line comes in pieces of that many
// units, and each piece counts as a line. `text` must outlive it.
struct TextLines {
  std::u16string_view text;
  size_t position = 0;
  size_t limit = kTextLineLimit;  // of a piece with its line end; above 0
};

// The next piece with its line end; empty at the end of the text.
[[nodiscard]] std::optional<std::u16string_view> NextLine(TextLines& lines);

// Without blanks and tabs on the left, and without these and CR, LF on the right. A part of `text`.
std::u16string_view TrimText(std::u16string_view text);

// What a line of a settings file says.
struct KeyValue {
  std::u16string_view key, value;  // trimmed; parts of the line
};

// Splits a line of "key=value" at the first "=" and trims both. Empty for a line without "=".
[[nodiscard]] std::optional<KeyValue> SplitKeyValue(std::u16string_view line);

// Like the runtime's _wtoi: leading blanks, a sign, digits; clamped to 32 bits; 0 for what is no number.
int ParseInt(std::u16string_view text);

}  // namespace quilmark
