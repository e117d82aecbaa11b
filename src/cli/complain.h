// Errors as the console program tells them.
#pragma once

#include <cstdio>
#include <string>

#include "cli/exit_code.h"

namespace quilmark {

inline int Complain(const std::string& what) {
  std::fprintf(stderr, "quilmark: %s\n", what.c_str());
  return kExitError;
}

}  // namespace quilmark
