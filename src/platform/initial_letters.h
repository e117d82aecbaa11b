// First letters of the readings of Chinese characters, by code page 936.
#pragma once

#include <string_view>

namespace quilmark {

// Whether a unit lies in the block of CJK unified ideographs.
constexpr bool IsIdeograph(char16_t unit) { return unit >= 0x4E00 && unit <= 0x9FFF; }

// First letter ('a'-'z') of the reading of an ideograph, by the ranges of GB2312 level one in code page
// 936; 0 outside U+4E00-U+9FFF and for characters that those ranges do not hold.
char16_t InitialLetterOf(char16_t unit);

// What a unit of a name adds to the name's key of initials: letters folded, digits, the letter of an
// ideograph; 0 for nothing.
char16_t InitialsKeyUnitOf(char16_t unit);

// The part of a name that the key is made of: up to the first "."; empty if no ideograph is in it.
std::u16string_view InitialsStemOf(std::u16string_view name);

}  // namespace quilmark
