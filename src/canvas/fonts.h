// The fonts of the window by what they are for.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quilmark {

// What a font is for. The values are places in kFontRows.
enum class FontRole : uint8_t { kMain, kList, kHeader, kTitle, kFilter, kSmall };

// What a font is made from.
struct FontRow {
  int height;  // of the letters, pixels at 96 dpi
  int weight;  // 400: regular, 700: bold
};
inline constexpr std::array<FontRow, 6> kFontRows = {
    {{12, 500}, {13, 500}, {12, 600}, {17, 400}, {12, 600}, {10, 400}}};
inline constexpr size_t kFontRoles = kFontRows.size();

// The row of a role.
inline constexpr const FontRow& RowOf(FontRole role) { return kFontRows[static_cast<size_t>(role)]; }

}  // namespace quilmark
