// The console program.
#pragma once

#include <string>
#include <vector>

namespace quilmark {

// `arguments` without the program's name, in UTF-8 or the host's bytes. Returns the exit code.
int RunConsole(std::vector<std::string> arguments);

}  // namespace quilmark
