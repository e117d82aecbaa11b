// Texts of the cells of a row.
#pragma once

#include <cstdint>
#include <string>

#include "platform/clock.h"

namespace quilmark {

inline constexpr std::u16string_view kNotKnownYet = u"...";
inline constexpr std::u16string_view kAbsent = u"-";

// "812 B", "12 KB", "3.40 MB", "1.25 GB".
std::u16string SizeText(uint64_t bytes);

// "2026-11-21 05:40" in local time; kAbsent for 0.
std::u16string TimeText(FileTime time);

// "01", "02", ... from the index 0 on.
std::u16string RowNumberText(uint64_t row);

}  // namespace quilmark
