#include "platform/debug_sink.h"

#include <windows.h>

#include <string>

namespace quilmark {

void SendToDebugger(std::string_view text) { OutputDebugStringA(std::string(text).c_str()); }

}  // namespace quilmark
