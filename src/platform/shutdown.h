// The end of the program, for whoever works in the background.
#pragma once

#include <atomic>

namespace quilmark {

// Set once when the program ends, by any thread; every long loop tests it. Tests clear it again.
inline std::atomic<bool> ShutdownRequested = false;

}  // namespace quilmark
