// A background job of which one runs at a time.
#pragma once

#include <atomic>
#include <functional>

#include "platform/background.h"

namespace quilmark {

// Outlives its job: static, or part of what lives as long as the process.
class SingleJob {
 public:
  // RunBackground, unless the former job still runs. False then, and where memory ran out.
  bool Start(const char* name, std::function<void()> work) {
    if (runs_.exchange(true)) return false;
    const bool isStarted = RunBackground(name, [this, work = std::move(work)] {
      const Mark mark{runs_};  // an exception ends the job too
      work();
    });
    if (!isStarted) runs_ = false;
    return isStarted;
  }

 private:
  struct Mark {
    std::atomic<bool>& runs;
    ~Mark() { runs = false; }
  };
  std::atomic<bool> runs_ = false;
};

}  // namespace quilmark
