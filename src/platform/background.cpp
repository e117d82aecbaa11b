#include "platform/background.h"

#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/detached_thread.h"

namespace quilmark {

namespace {

using ExceptionLog = std::function<void(const char* what)>;

struct BackgroundJobs {
  std::mutex mutex;
  std::condition_variable allEnded;
  size_t running = 0;  // guarded by `mutex`, and so is `log`
  ExceptionLog log;
};

// Never destroyed: detached threads count themselves out until the process is gone.
BackgroundJobs& Jobs() {
  static BackgroundJobs& jobs = *new BackgroundJobs;
  return jobs;
}

void CountJobIn() {
  std::scoped_lock lock(Jobs().mutex);
  ++Jobs().running;
}

void CountJobOut() {
  std::scoped_lock lock(Jobs().mutex);
  if (--Jobs().running == 0) Jobs().allEnded.notify_all();
}

// A log that fails itself costs the line and nothing else.
void LogException(const char* name, const char* what) noexcept try {
  std::unique_lock lock(Jobs().mutex);
  const ExceptionLog log = Jobs().log;
  lock.unlock();
  if (!log) return;
  std::string line = name;
  if (what != nullptr) line.append(": ").append(what);
  log(line.c_str());
} catch (...) {
}

// What the thread's job is to undo at its end; null where the thread runs none.
thread_local std::vector<void (*)()>* undoAtEnd = nullptr;

class EndOfJob {
 public:
  EndOfJob() { undoAtEnd = &undo_; }
  ~EndOfJob() {
    undoAtEnd = nullptr;
    for (; !undo_.empty(); undo_.pop_back()) undo_.back()();
  }
  EndOfJob(const EndOfJob&) = delete;
  EndOfJob& operator=(const EndOfJob&) = delete;

 private:
  std::vector<void (*)()> undo_;
};

// `work` is destroyed here, so that nothing of it lives on when the job is counted out.
void RunGuarded(const char* name, std::function<void()> work) noexcept {
  try {
    work();
  } catch (const std::exception& exception) {
    LogException(name, exception.what());
  } catch (...) {
    LogException(name, nullptr);
  }
}

[[noreturn]] void ThrowNoThread(const char* name) {
  throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again),
                          std::string("no thread for ") + name);
}

// Where the exception would leave it, std::terminate has it to tell of.
[[noreturn]] void EndWithoutThread(const char* name) noexcept { ThrowNoThread(name); }

}  // namespace

bool RunBackground(const char* name, std::function<void()> work) {
  if (name == nullptr) name = "unknown";
  CountJobIn();
  try {
    const bool isStarted = StartDetachedThread(name, [name, work = std::move(work)]() mutable {
      {
        const EndOfJob end;
        RunGuarded(name, std::move(work));
      }
      CountJobOut();
    });
    if (!isStarted) EndWithoutThread(name);
    return true;
  } catch (const std::exception& exception) {
    LogException(name, exception.what());
    CountJobOut();
    return false;
  }
}

bool AtEndOfJob(void (*undo)()) {
  if (undoAtEnd == nullptr) return false;
  undoAtEnd->push_back(undo);
  return true;
}

bool SingleJob::Start(const char* name, std::function<void()> work, std::function<void()> whenAsked) {
  return StartWith(
      name, [&work] { return std::move(work); }, std::move(whenAsked));
}

bool SingleJob::StartWith(const char* name, const std::function<std::function<void()>()>& prepare,
                          std::function<void()> whenAsked) {
  // Before the try: a job that ends between the two finds it.
  asked_ = true;
  if (running_.exchange(true)) return false;
  asked_ = false;
  bool isStarted = false;
  try {
    isStarted = RunBackground(
        name, [this, work = prepare(), whenAsked = std::move(whenAsked)] { Run(work, whenAsked); });
  } catch (...) {
    running_ = false;
    throw;
  }
  if (!isStarted) running_ = false;
  return isStarted;
}

void SingleJob::Run(const std::function<void()>& work, const std::function<void()>& whenAsked) {
  std::exception_ptr failure;
  try {
    work();
  } catch (...) {
    failure = std::current_exception();
  }
  running_ = false;
  if (TakeAsked() && whenAsked) whenAsked();
  if (failure) std::rethrow_exception(failure);
}

void SetBackgroundExceptionLog(ExceptionLog log) {
  std::scoped_lock lock(Jobs().mutex);
  Jobs().log.swap(log);
}

bool WaitForBackgroundJobs(uint32_t timeoutMs) {
  std::unique_lock lock(Jobs().mutex);
  return Jobs().allEnded.wait_for(lock, std::chrono::milliseconds(timeoutMs),
                                  [] { return Jobs().running == 0; });
}

}  // namespace quilmark
