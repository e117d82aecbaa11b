// The system's end of debug_output.h.
#pragma once

#include <string_view>

namespace quilmark {

// UTF-8.
void SendToDebugger(std::string_view text);

}  // namespace quilmark
