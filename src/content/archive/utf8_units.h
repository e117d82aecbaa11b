// UTF-8 into room for UTF-16 that is there already.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quilmark {

enum class MalformedUtf8 { kRefused, kReplaced };  // replaced: each such byte by U+FFFD

// Writes the units of `bytes` to `out`, which has room for one a byte, and returns their number. Empty
// for bytes that are no UTF-8, where those are refused.
[[nodiscard]] std::optional<size_t> Utf8ToUnits(std::string_view bytes, char16_t* out,
                                                MalformedUtf8 malformed);

// Whether all of it is well-formed.
bool IsUtf8(std::string_view bytes);

}  // namespace quilmark
