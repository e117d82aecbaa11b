// Completion of the command line.
#pragma once

namespace quilmark {

// A script for bash: source <(quilmark --completion bash).
const char* BashCompletion();

}  // namespace quilmark
