// Errors as the console program tells them.
#pragma once

#include <cstdio>
#include <string>

#include "cli/exit_code.h"

namespace quilmark {

// Writes a line on standard error that begins with the program's name. Returns kExitError, so that a
// command can end by it.
inline int Complain(const std::string& what) {
  std::fprintf(stderr, "quilmark: %s\n", what.c_str());
  return kExitError;
}

}  // namespace quilmark
