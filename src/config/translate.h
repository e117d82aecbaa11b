// Texts of the interface: a key each, with the English text beside it where it is used.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

// The text of `key` in the language of the interface; `english` where that language has none.
inline std::u16string TranslateOr([[maybe_unused]] std::u16string_view key,
                                  std::u16string_view english) {
  return std::u16string(english);
}

}  // namespace quilmark
