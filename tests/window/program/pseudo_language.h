// Texts as other languages might have them, made of the English ones, to look at what they do to the
// window.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

// "long": half as long again, in brackets that show where a text is cut; "ideographs"; "right-to-left".
// False for another name.
bool TakePseudoLanguage(std::u16string_view name);

}  // namespace quilmark
