// The extractors of xml_text.h once more, rule by rule and one character after the other.
#pragma once

#include <string>
#include <string_view>

namespace quilmark {

std::u16string ReferenceRunTextWide(std::u16string_view xml);
std::string ReferenceRunTextBytes(std::string_view xml);
std::string ReferenceStripAllTags(std::string_view xml);

}  // namespace quilmark
