// The query that a user typed, as the search takes it.
#pragma once

#include <string>

namespace quilmark {

// True for a query that looks into files ("s:..."), which the console program does not answer.
bool IsContentQuery(const std::string& typed);

// The query in UTF-16, without blanks around it. `typed` is in UTF-8 or the host's bytes, so that a name
// that is no UTF-8 can be asked for.
std::u16string QueryTextOf(const std::string& typed);

}  // namespace quilmark
