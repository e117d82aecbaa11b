// Stops other threads at a lock, so that a test acts while they wait there.
#pragma once

#include <functional>
#include <future>
#include <mutex>
#include <shared_mutex>
#include <thread>

#include "platform/clock.h"
#include "platform/locks.h"

namespace quilmark {

// Holds a lock on a thread of its own from the constructor's return to Open or its own end. A shared
// hold stops writers alone.
class Gate {
 public:
  enum class Stops { kWriters, kAll };

  Gate(OrderedLock& lock, Stops stops) {
    std::promise<void> isHeld;
    thread_ = std::thread([this, &lock, stops, &isHeld] {
      std::shared_lock shared(lock, std::defer_lock);
      std::unique_lock whole(lock, std::defer_lock);
      stops == Stops::kAll ? whole.lock() : shared.lock();
      isHeld.set_value();
      opened_.get_future().wait();
    });
    isHeld.get_future().wait();
  }
  ~Gate() { Open(); }
  Gate(const Gate&) = delete;
  Gate& operator=(const Gate&) = delete;

  void Open() {
    if (!thread_.joinable()) return;
    opened_.set_value();
    thread_.join();
  }

 private:
  std::promise<void> opened_;
  std::thread thread_;
};

// Waits until `isSo`; false if a minute does not bring it.
inline bool WaitUntil(const std::function<bool()>& isSo) {
  constexpr int kMostSteps = 60'000;
  for (int step = 0; step < kMostSteps && !isSo(); ++step) SleepMs(1);
  return isSo();
}

}  // namespace quilmark
