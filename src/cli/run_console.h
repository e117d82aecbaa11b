// The console program.
#pragma once

#include <string>
#include <vector>

namespace quilmark {

// Runs the command that the arguments ask for, and returns the exit code. The arguments are in UTF-8 or
// the host's bytes and come without the program's name.
int RunConsole(std::vector<std::string> arguments);

}  // namespace quilmark
