// Detached work.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>

namespace quilmark {

// Starts `work` on a detached thread called `name` (a literal; systems show the first 15 characters). An
// exception that leaves `work` goes to the log of SetBackgroundExceptionLog with the name and ends only
// that thread. A system that gives no thread ends the program by std::terminate, as it does for any
// thread of the library: without its jobs the window would wait for ever. False where memory ran out on
// the way; `work` then did not run. The result may be dropped where nobody waits for the work.
bool RunBackground(const char* name, std::function<void()> work);

// Has `undo` called on this thread when the job that runs on it has ended, the latest first: for what a
// thread of the system is to give back before it ends. False, and nothing is called, on a thread that
// runs no job.
bool AtEndOfJob(void (*undo)());

// A job of which one runs at a time. Lives as long as the process, or until WaitForBackgroundJobs says
// that none runs. Any thread.
class SingleJob {
 public:
  SingleJob() = default;
  SingleJob(const SingleJob&) = delete;
  SingleJob& operator=(const SingleJob&) = delete;

  // RunBackground, unless the job runs already: then that is remembered. However `work` ends, whoever
  // asked after it began is answered by `whenAsked`, called on the job's thread when another may start.
  // False if `work` does not run, for one that runs already or for want of memory: then nobody is
  // answered.
  bool Start(const char* name, std::function<void()> work, std::function<void()> whenAsked = {});

  // The same with work that prepare() makes, on the calling thread and only if it is to run. What
  // prepare() throws goes to the caller, and another may start then.
  bool StartWith(const char* name, const std::function<std::function<void()>()>& prepare,
                 std::function<void()> whenAsked);

  // Whether somebody was refused since the job began or since the last call: for work that goes over
  // its matter once more instead of being started again.
  bool TakeAsked() { return asked_.exchange(false); }

  // Whether the job has its turn: another Start would be refused.
  bool IsRunning() const { return running_; }

 private:
  void Run(const std::function<void()>& work, const std::function<void()>& whenAsked);

  std::atomic<bool> running_ = false, asked_ = false;
};

// Called with the job's name, then ": " and what() where the exception has one. The default drops it.
void SetBackgroundExceptionLog(std::function<void(const char* what)> log);

// Waits until no job of RunBackground runs, at most `timeoutMs`; false at the timeout. For the end of a
// console program and for tests, which may drop the result: the program ends either way. The desktop
// program gives its threads a pause and ends.
bool WaitForBackgroundJobs(uint32_t timeoutMs);

}  // namespace quilmark
