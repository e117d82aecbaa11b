// A tool of the system that is run without a window.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <vector>

#include "shell/app/autostart.h"

namespace quilmark {

// The path of a program of the system's own folder; its bare name where that folder is not known.
[[nodiscard]] std::u16string SystemToolPath(const std::u16string& name);

// Runs the program without a window and waits for its end, at most `mostMs`: then it is terminated with
// the code 1460, and 258 is its exit code.
[[nodiscard]] ToolRun RunTool(const std::u16string& program,
                              const std::vector<std::u16string>& arguments, uint32_t mostMs);

}  // namespace quilmark
