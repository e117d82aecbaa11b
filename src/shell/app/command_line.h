// The one thing that the command line can ask: a start without a visible window.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

// True if an argument after the first is "-hidden" or "/hidden", in any case.
bool WantsHiddenStart(const std::vector<std::u16string>& arguments);

// True if one of the two words stands anywhere in the text: for a command line that cannot be split.
bool WantsHiddenStart(std::u16string_view commandLine);

}  // namespace quilmark
