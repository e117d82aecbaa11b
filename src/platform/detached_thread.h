// A thread that nobody waits for.
#pragma once

#include <functional>

namespace quilmark {

// Runs `body`, which lets no exception out, on a thread of its own. False if none could be started;
// `body` then did not run.
bool StartDetachedThread(std::function<void()> body);

}  // namespace quilmark
