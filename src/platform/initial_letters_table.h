// Letters by ideograph, generated.
#pragma once

namespace quilmark {

// The block of CJK unified ideographs.
inline constexpr char16_t kFirstIdeograph = 0x4E00;
inline constexpr char16_t kLastIdeograph = 0x9FFF;

// One of 'a'-'z' for each unit from kFirstIdeograph to kLastIdeograph, '.' for none; a NUL at the end.
extern const char kInitialLetters[kLastIdeograph - kFirstIdeograph + 2];

}  // namespace quilmark
