// The query that a user typed, as the search takes it.
#pragma once

#include <string>

namespace quilmark {

// True for a query that looks into files.
bool IsContentQuery(const std::string& typed);

// `typed` is in UTF-8 or the host's bytes: a name that is no UTF-8 can be asked for. A folder by the
// host's own path becomes the one on its mapped drive. A relative path is ordinary text: what it names
// would depend on where the program was started. Drives are mapped already.
std::u16string QueryTextOf(const std::string& typed);

}  // namespace quilmark
