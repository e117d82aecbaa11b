// The command "find".
#pragma once

#include "cli/options.h"

namespace quilmark {

// Indexes, searches and prints. Returns the exit code; errors go to standard error.
int RunFind(const FindOptions& options);

}  // namespace quilmark
