// Lists of file extensions as a user types them: ".txt, md,LOG".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// The pieces between commas, trimmed and folded, each with a dot in front; empty pieces are dropped.
std::vector<std::u16string> ParseExtensionList(std::u16string_view text);

// The list joined by commas without blanks.
std::u16string JoinExtensionList(const std::vector<std::u16string>& extensions);

}  // namespace quilmark
