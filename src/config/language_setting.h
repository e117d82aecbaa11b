// language.ini: the language that the user chose.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

// The value of the first "lang" in a file's text as it stands there; empty without one.
std::u16string ReadLanguageSetting(std::u16string_view text);

// From and to the file in the configuration directory. Empty without a file; a failed save is ignored.
std::u16string LoadLanguageSetting();
void SaveLanguageSetting(std::u16string_view code);

}  // namespace quilmark
