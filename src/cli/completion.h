// Completion of the command line.
#pragma once

namespace quilmark {

// The script that `source <(quilmark --completion bash)` gives to bash. Static text.
const char* BashCompletion();

}  // namespace quilmark
