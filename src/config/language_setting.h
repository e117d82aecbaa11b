// language.ini: the language that the user chose.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

// The value of the first "lang" in a file's text as it stands there; empty without one.
std::u16string ReadLanguageSetting(std::u16string_view text);

// The code of the file in the configuration directory; empty without a file.
std::u16string LoadLanguageSetting();

// Writes that file. A save that fails is lost.
void SaveLanguageSetting(std::u16string_view code);

}  // namespace quilmark
