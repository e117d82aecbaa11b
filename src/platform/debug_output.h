// Lines for whoever watches the program with a debugger's output window.
#pragma once

#include <string_view>

namespace quilmark {

// UTF-8; `text` brings its own line end. Windows: OutputDebugStringA. Elsewhere nobody listens. Any
// thread.
void WriteDebugOutput(std::string_view text);

// Hands every text to `listener` as well; null ends that. For tests.
void SetDebugOutputListener(void (*listener)(std::string_view text));

}  // namespace quilmark
