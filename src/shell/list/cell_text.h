// Texts of the cells of a row.
#pragma once

#include <cstdint>
#include <string>

#include "platform/clock.h"

namespace quilmark {

inline constexpr std::u16string_view kNotKnownYet = u"...";  // can be asked for
inline constexpr std::u16string_view kAbsent = u"-";         // there is none, or it cannot be had

// A size as "812 B", "12 KB", "3.40 MB", "1.25 GB".
std::u16string SizeText(uint64_t bytes);

// A moment as "2026-11-21 05:40" in local time; kAbsent for 0.
std::u16string TimeText(FileTime time);

// The number of a row, counted from 1: "01" for row 0.
std::u16string RowNumberText(uint64_t row);

}  // namespace quilmark
