// The command "grep".
#pragma once

#include "cli/options.h"

namespace quilmark {

// Searches in files and prints those that hold the words. Returns the exit code; errors go to standard
// error.
int RunGrep(const GrepOptions& options);

}  // namespace quilmark
