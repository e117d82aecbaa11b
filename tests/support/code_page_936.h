// Code page 936 as the system knows it.
#pragma once

#include <cstdint>
#include <optional>

namespace quilmark {

// Lead byte * 256 + trail byte; empty where the unit has no form of two bytes. Fails the running test if
// the system has no such converter.
std::optional<uint16_t> CodePage936CodeOf(char16_t unit);

}  // namespace quilmark
