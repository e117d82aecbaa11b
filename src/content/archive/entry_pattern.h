// Which entries of an archive are looked at.
#pragma once

#include <string_view>

namespace quilmark {

// Whether the pattern matches the whole name. "*" stands for any characters, one at the end for one at
// least: "word/*" does not match "word/". All else stands for itself. Takes at most the product of both
// lengths in steps.
bool MatchEntryPattern(std::string_view name, std::string_view pattern);

}  // namespace quilmark
