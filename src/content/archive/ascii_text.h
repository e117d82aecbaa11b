// The text of an XML part in a form that is good for one thing: to say quickly that it cannot hold a
// term.
#pragma once

#include <optional>
#include <string_view>

namespace quilmark {

// The ASCII of a part's text without its white space, in two extents.
struct AsciiTexts {
  std::string_view inRuns;  // of text runs, as ExtractRunTextBytes knows them
  std::string_view all;     // of all that StripAllTagsBytes takes; may be the same place
};

// Takes both at once. Each needs room of as many bytes as the part has. A term of ASCII without
// white space that stands in a text of ExtractRunTextWide, of ExtractRunTextBytes or of
// StripAllTagsBytes, with that text's white space taken out, stands in one of these two: the first for
// the first two, else the second. Empty where that cannot be promised: the part has tags, entities or
// bytes that the three read differently. `xml` is well-formed UTF-8.
[[nodiscard]] std::optional<AsciiTexts> TakeAsciiTexts(std::string_view xml, char* runRoom,
                                                       char* allRoom);

}  // namespace quilmark
