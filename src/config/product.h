// The product's own names.
#pragma once

#include <string_view>

namespace quilmark {

inline constexpr std::u16string_view kProductName = u"Quilmark";
inline constexpr std::u16string_view kMainTitle = u"Quilmark - https://quilmark.example";

}  // namespace quilmark
