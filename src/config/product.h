// The product's own names.
#pragma once

#include <string_view>

namespace quilmark {

// The title of the message box of a failed start, where no language file gives one.
inline constexpr std::u16string_view kProductName = u"Quilmark";

// The title of the main window, where no language file gives one.
inline constexpr std::u16string_view kMainTitle = u"Quilmark - https://quilmark.example";

// The home page, which the title names.
inline constexpr std::u16string_view kHomePage = kMainTitle.substr(kMainTitle.find(u"https:"));

}  // namespace quilmark
