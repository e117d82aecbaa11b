// Texts of the interface: a key each, with the English text beside it where it is used.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

// Gives a text in another language, empty where it has none.
using Translation = std::u16string (*)(std::u16string_view key, std::u16string_view english);
inline Translation translation = nullptr;  // null: English. Set before the first window

// The text of `key` in the language of the interface; `english` where that language has none.
inline std::u16string TranslateOr(std::u16string_view key, std::u16string_view english) {
  std::u16string text = translation != nullptr ? translation(key, english) : std::u16string();
  return text.empty() ? std::u16string(english) : text;
}

}  // namespace quilmark
