// A sleep of one thread that another can end.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>

namespace quilmark {

// One thread sleeps, any may wake it.
class Pause {
 public:
  // Sleeps `ms` milliseconds, or less once `wanted` is clear and Wake was called; not at all if it is
  // clear already.
  void Sleep(uint32_t ms, const std::atomic<bool>& wanted);

  // Ends the sleep in progress. Called after `wanted` was cleared, or it goes on sleeping.
  void Wake();

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
};

}  // namespace quilmark
