// Formatter for texts that a user reads, with patterns that a user's language file may replace.
#pragma once

#include <concepts>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace quilmark {

// What a form of a pattern can be filled with; a text must outlive the call.
using FormatArgument = std::variant<int64_t, uint64_t, double, std::u16string_view>;

// FormatText with its arguments in a row.
std::u16string FormatArguments(std::u16string_view pattern, std::span<const FormatArgument> arguments);

// A text as an argument; it must outlive the call of FormatText.
inline FormatArgument MakeFormatArgument(std::u16string_view text) { return text; }

// A floating-point number as an argument.
inline FormatArgument MakeFormatArgument(double number) { return number; }

// An integer with a sign as an argument.
template <std::signed_integral T>
FormatArgument MakeFormatArgument(T number) {
  return static_cast<int64_t>(number);
}

// One without a sign.
template <std::unsigned_integral T>
FormatArgument MakeFormatArgument(T number) {
  return static_cast<uint64_t>(number);
}

// Fills the printf forms of `pattern`: %d %i %u %x %X %c %s %f with flags "-0+ #", width, precision and
// any of the lengths hh h l ll z j t w I64, and %%. An argument is converted by its own type and not by
// the form's length, so that no pattern can misread memory: a text form prints a number's digits, a
// number form prints a text as it is. A form without an argument, or one that is not known, prints as it
// stands. Width and precision above 1,000 count as 1,000; "*" is not known. Negative numbers under %u
// and %x wrap at 64 bits.
template <typename... Arguments>
std::u16string FormatText(std::u16string_view pattern, const Arguments&... arguments) {
  if constexpr (sizeof...(arguments) == 0) {
    return FormatArguments(pattern, {});
  } else {
    const FormatArgument list[] = {MakeFormatArgument(arguments)...};
    return FormatArguments(pattern, list);
  }
}

}  // namespace quilmark
