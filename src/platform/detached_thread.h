// Threads that nobody waits for.
#pragma once

#include <functional>

namespace quilmark {

// Runs `body`, which lets no exception out, on a thread called `name`: a literal, of which systems show
// the first 15 characters. False if no thread could be started; `body` then does not run.
[[nodiscard]] bool StartDetachedThread(const char* name, std::function<void()> body);

}  // namespace quilmark
