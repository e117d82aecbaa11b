// A background job that a test keeps running.
#pragma once

#include <gtest/gtest.h>

#include <future>
#include <thread>

#include "platform/background.h"

namespace quilmark {

// Runs as `job` from the constructor's return to End or its own end. WaitForBackgroundJobs waits for it.
class HeldJob {
 public:
  // Fails the test where `job` runs already.
  explicit HeldJob(SingleJob& job) : job_(job) {
    EXPECT_TRUE(job.Start("held_job", [ended = end_.get_future().share()] { ended.wait(); }));
  }
  ~HeldJob() { End(); }
  HeldJob(const HeldJob&) = delete;
  HeldJob& operator=(const HeldJob&) = delete;

  // Ends the job, and returns when another may start.
  void End() {
    if (hasEnded_) return;
    hasEnded_ = true;
    end_.set_value();
    while (job_.IsRunning()) std::this_thread::yield();
  }

 private:
  SingleJob& job_;
  std::promise<void> end_;
  bool hasEnded_ = false;
};

}  // namespace quilmark
