// Detached work.
#pragma once

#include <cstdint>
#include <functional>

namespace quilmark {

// Starts `work` on a detached thread called `name` (a literal; systems show the first 15 characters). An
// exception that leaves `work` goes to the log of SetBackgroundExceptionLog with the name and ends only
// that thread. A system that gives no thread ends the program by std::terminate, as it does for any
// thread of the library: without its jobs the window would wait for ever. False where memory ran out on
// the way; `work` then did not run.
bool RunBackground(const char* name, std::function<void()> work);

// Called with the job's name, then ": " and what() where the exception has one. The default drops it.
void SetBackgroundExceptionLog(std::function<void(const char* what)> log);

// Waits until no job of RunBackground runs, at most `timeoutMs`; false at the timeout. For the end of a
// console program and for tests: the desktop program gives its threads a pause and ends.
bool WaitForBackgroundJobs(uint32_t timeoutMs);

}  // namespace quilmark
