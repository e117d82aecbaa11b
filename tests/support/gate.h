// Stops other threads, so that a test acts while they wait.
#pragma once

#include <condition_variable>
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
    thread_ = std::thread([this, &lock, stops] {
      std::shared_lock shared(lock, std::defer_lock);
      std::unique_lock whole(lock, std::defer_lock);
      stops == Stops::kAll ? whole.lock() : shared.lock();
      isHeld_.set_value();
      opened_.get_future().wait();
    });
    isHeld_.get_future().wait();
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
  std::promise<void> isHeld_, opened_;  // until the thread is joined, which may still be in one of them
  std::thread thread_;
};

// Whoever passes waits until it is opened, once for all and for good. The semaphores of the library lose
// a release now and then on Windows (docs/decisions/0021).
class Door {
 public:
  void Open() {
    const std::scoped_lock lock(mutex_);
    isOpen_ = true;
    opened_.notify_all();
  }
  void Pass() {
    std::unique_lock lock(mutex_);
    opened_.wait(lock, [this] { return isOpen_; });
  }

 private:
  std::mutex mutex_;
  std::condition_variable opened_;
  bool isOpen_ = false;  // guarded by `mutex_`
};

// Waits until `isSo`; false if a minute does not bring it.
inline bool WaitUntil(const std::function<bool()>& isSo) {
  constexpr int kMostSteps = 60'000;
  for (int step = 0; step < kMostSteps && !isSo(); ++step) SleepMs(1);
  return isSo();
}

}  // namespace quilmark
