// The system's end of debug_output.h.
#pragma once

#include <string_view>

namespace quilmark {

// Hands `text`, UTF-8 with its own line end, to a debugger if one listens. Any thread.
void SendToDebugger(std::string_view text);

}  // namespace quilmark
