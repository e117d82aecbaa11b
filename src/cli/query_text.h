// The query that a user typed, as the search takes it.
#pragma once

#include <string>

namespace quilmark {

// True for a query that looks into files.
bool IsContentQuery(const std::string& typed);

// `typed` is in UTF-8 or the host's bytes: a name that is no UTF-8 can be asked for. Trimmed.
std::u16string QueryTextOf(const std::string& typed);

}  // namespace quilmark
