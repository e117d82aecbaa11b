// The text of an XML part of an archive, in three ways from strict to loose.
//
// The output goes to `out`, which has room for as many units as the part has and may be the part's own
// place; what comes back is a part of it, without blanks at its ends. White space becomes single blanks.
// Once the check says that the work does not go on, what comes back is of no use.
#pragma once

#include <string_view>

#include "content/match/work_check.h"

namespace quilmark {

// What wide texts count as white space: tab to carriage return, blank, U+0085, U+00A0, U+1680, U+2000 to
// U+200A, U+2028, U+2029, U+202F, U+205F, U+3000, as iswspace does on Windows.
bool IsWideSpace(char16_t unit);

// What stands in text runs ("t", "v"), with a blank at breaks ("p", "br", "cr", "tab", "tc", "tr",
// "row", "c"); names without their prefix and without regard to case. Entities of at most 14 characters
// and one unit are resolved, others stay as they are.
std::u16string_view ExtractRunTextWide(std::u16string_view xml, char16_t* out, const WorkCheck& check);

// The same of UTF-8. What begins with "&" goes up to the next ";"; its first 15 characters are resolved,
// or it is dropped. The byte A0 is white space wherever it stands.
std::string_view ExtractRunTextBytes(std::string_view xml, char* out, const WorkCheck& check);

// All that stands outside of "<" and ">", and what stands in CDATA sections; entities as above.
std::string_view StripAllTagsBytes(std::string_view xml, char* out, const WorkCheck& check);

}  // namespace quilmark
