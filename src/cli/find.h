// The command "find".
#pragma once

#include "cli/options.h"

namespace quilmark {

// Indexes, searches, prints; the exit code. Errors go to standard error.
int RunFind(const FindOptions& options);

}  // namespace quilmark
