// Conversions between UTF-16 and bytes.
//
// Two pairs. The text pair is for contents (settings, output): what is malformed becomes U+FFFD. The
// host pair is for names of a POSIX host and loses nothing: a byte that is no part of well-formed UTF-8
// becomes the lone low surrogate 0xDC00 + byte, and so does a backslash (0xDC5C), which a Windows path
// could not hold.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

// Whether a unit is half of a pair that stands for a character above U+FFFF.
inline bool IsSurrogate(char16_t unit) { return (unit & 0xF800) == 0xD800; }

// Whether it is the first half.
inline bool IsHighSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xD800; }

// Whether it is the second half.
inline bool IsLowSurrogate(char16_t unit) { return (unit & 0xFC00) == 0xDC00; }

// Stands for what is malformed.
inline constexpr char16_t kReplacement = 0xFFFD;

// Stands for a backslash inside a name of a POSIX host.
inline constexpr char16_t kNameBackslash = 0xDC5C;

// UTF-8 as UTF-16. Each malformed byte gives one U+FFFD. A byte order mark is an ordinary character.
std::u16string FromUtf8(std::string_view bytes);

// UTF-16 as UTF-8. A lone surrogate gives the bytes of U+FFFD.
std::string ToUtf8(std::u16string_view text);

// Appends the name to `out`. ToHostBytes(FromHostBytes(x)) == x for any bytes.
void AppendFromHostBytes(std::string_view bytes, std::u16string& out);

// The name of these bytes.
std::u16string FromHostBytes(std::string_view bytes);

// The reverse. A lone surrogate outside 0xDC80-0xDCFF and 0xDC5C gives the bytes of U+FFFD.
std::string ToHostBytes(std::u16string_view name);

}  // namespace quilmark
