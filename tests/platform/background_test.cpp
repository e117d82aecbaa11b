#include "platform/background.h"

#include <gtest/gtest.h>

#include <atomic>
#include <functional>
#include <future>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace quilmark {
namespace {

constexpr uint32_t kLongMs = 60'000;  // a limit that only a hanging test reaches

// Collects the lines of the log for its own lifetime.
class BackgroundLog {
 public:
  BackgroundLog() {
    SetBackgroundExceptionLog([this](const char* what) { lines.emplace_back(what); });
  }
  ~BackgroundLog() { SetBackgroundExceptionLog({}); }

  std::vector<std::string> lines;  // read after WaitForBackgroundJobs
};

TEST(Background, RunsTheWorkOnAnotherThread) {
  std::promise<std::thread::id> ran;
  ASSERT_TRUE(RunBackground("do_search", [&] { ran.set_value(std::this_thread::get_id()); }));
  EXPECT_NE(ran.get_future().get(), std::this_thread::get_id());
  EXPECT_TRUE(WaitForBackgroundJobs(kLongMs));
}

TEST(Background, AnExceptionGoesToTheLogWithNameAndReason) {
  BackgroundLog log;
  ASSERT_TRUE(RunBackground("do_sort", [] { throw std::runtime_error("no memory card"); }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_EQ(log.lines, (std::vector<std::string>{"do_sort: no memory card"}));
}

TEST(Background, AnExceptionWithoutAReasonGoesToTheLogByName) {
  BackgroundLog log;
  ASSERT_TRUE(RunBackground("do_sort", [] { throw 42; }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  ASSERT_TRUE(RunBackground(nullptr, [] { throw 42; }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_EQ(log.lines, (std::vector<std::string>{"do_sort", "unknown"}));
}

std::string undone;

TEST(Background, WhatAThreadIsToGiveBackGoesWhenItsJobHasEnded) {
  undone.clear();
  ASSERT_TRUE(RunBackground("do_sort", [] {
    EXPECT_TRUE(AtEndOfJob([] { undone += 'a'; }));
    EXPECT_TRUE(AtEndOfJob([] { undone += 'b'; }));
    EXPECT_EQ(undone, "");
    throw 42;
  }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_EQ(undone, "ba") << "the latest first, and once";
  EXPECT_FALSE(AtEndOfJob([] { undone += 'c'; })) << "this thread runs no job";
  EXPECT_EQ(undone, "ba");
}

TEST(Background, AnExceptionWithoutALogIsDropped) {
  ASSERT_TRUE(RunBackground("do_sort", [] { throw std::runtime_error("unheard"); }));
  EXPECT_TRUE(WaitForBackgroundJobs(kLongMs));
}

TEST(Background, ALogThatFailsEndsNothing) {
  SetBackgroundExceptionLog([](const char*) { throw std::runtime_error("the log is full"); });
  ASSERT_TRUE(RunBackground("do_sort", [] { throw 42; }));
  EXPECT_TRUE(WaitForBackgroundJobs(kLongMs));
  SetBackgroundExceptionLog({});
}

TEST(Background, WaitingEndsAtTheTimeoutWhileAJobRuns) {
  std::promise<void> mayEnd;
  ASSERT_TRUE(RunBackground("cache_autosave", [end = mayEnd.get_future().share()] { end.wait(); }));
  EXPECT_FALSE(WaitForBackgroundJobs(0));
  EXPECT_FALSE(WaitForBackgroundJobs(1));
  mayEnd.set_value();
  EXPECT_TRUE(WaitForBackgroundJobs(kLongMs));
}

TEST(Background, NoJobNeedsNoWait) { EXPECT_TRUE(WaitForBackgroundJobs(0)); }

TEST(Background, WhatTheWorkHeldIsGoneWhenTheJobsHaveEnded) {
  auto held = std::make_shared<int>(1);
  const std::weak_ptr<int> watch = held;
  ASSERT_TRUE(RunBackground("do_search", [held = std::move(held)] {}));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_TRUE(watch.expired());
}

TEST(Background, AJobStartsFurtherJobsThatAreWaitedFor) {
  std::string order;
  ASSERT_TRUE(RunBackground("outer", [&] {
    order += "outer ";
    EXPECT_TRUE(RunBackground("inner", [&] { order += "inner"; }));
  }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_EQ(order, "outer inner");
}

// A job that waits until it is let go.
struct HeldJob {
  std::promise<void> begun, end;
  std::function<void()> Work() {
    return [this] {
      begun.set_value();
      end.get_future().wait();
    };
  }
};

TEST(SingleJob, RunsOneAtATime) {
  SingleJob job;
  HeldJob held;
  int asked = 0;
  ASSERT_TRUE(job.Start("sync", held.Work(), [&] { ++asked; }));
  held.begun.get_future().wait();
  EXPECT_TRUE(job.IsRunning());
  bool isRun = false;
  EXPECT_FALSE(job.Start("sync", [&] { isRun = true; }));
  EXPECT_FALSE(job.Start("sync", [&] { isRun = true; }));
  held.end.set_value();
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_FALSE(isRun);
  EXPECT_EQ(asked, 1) << "for both, once it has ended";
  EXPECT_FALSE(job.IsRunning());
  ASSERT_TRUE(job.Start(
      "sync", [&] { isRun = true; }, [&] { ++asked; }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_TRUE(isRun);
  EXPECT_EQ(asked, 1) << "nobody asked meanwhile";
}

TEST(SingleJob, MayBeStartedAgainByWhoeverWasRefused) {
  SingleJob job;
  HeldJob held;
  std::atomic<int> runs = 0;
  const auto again = [&] { EXPECT_TRUE(job.Start("sync", [&] { ++runs; })); };
  ASSERT_TRUE(job.Start("sync", held.Work(), again));
  held.begun.get_future().wait();
  EXPECT_FALSE(job.Start("sync", [] {}));
  held.end.set_value();
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_EQ(runs, 1);
}

TEST(SingleJob, IsToldOfThoseWhoAskedWhileItRuns) {
  SingleJob job;
  std::vector<bool> asked;
  int refused = 0;
  const auto work = [&] {
    asked.push_back(job.TakeAsked());
    refused += job.Start("sync", [] {}) ? 0 : 1;
    asked.push_back(job.TakeAsked());
    asked.push_back(job.TakeAsked());
  };
  ASSERT_TRUE(job.Start("sync", work, [&] { ADD_FAILURE() << "it was taken"; }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_EQ(refused, 1);
  EXPECT_EQ(asked, (std::vector<bool>{false, true, false}));
}

TEST(SingleJob, PreparesOnlyWhatRuns) {
  SingleJob job;
  HeldJob held;
  int prepared = 0;
  const auto prepare = [&] {
    ++prepared;
    return held.Work();
  };
  ASSERT_TRUE(job.StartWith("hydrate", prepare, {}));
  held.begun.get_future().wait();
  EXPECT_FALSE(job.StartWith("hydrate", prepare, {}));
  EXPECT_EQ(prepared, 1);
  held.end.set_value();
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  const auto fail = []() -> std::function<void()> { throw std::runtime_error("nothing to do"); };
  EXPECT_THROW(job.StartWith("hydrate", fail, {}), std::runtime_error);
  EXPECT_FALSE(job.IsRunning());
}

TEST(SingleJob, EndsWhenItsWorkThrows) {
  BackgroundLog log;
  SingleJob job;
  bool isAnswered = false;
  const auto work = [&] {
    EXPECT_FALSE(job.Start("sync", [] {}));
    throw std::runtime_error("no more drives");
  };
  ASSERT_TRUE(job.Start("sync", work, [&] { isAnswered = true; }));
  ASSERT_TRUE(WaitForBackgroundJobs(kLongMs));
  EXPECT_TRUE(isAnswered);
  EXPECT_EQ(log.lines, (std::vector<std::string>{"sync: no more drives"}));
  EXPECT_TRUE(job.Start("sync", [] {}));
  EXPECT_TRUE(WaitForBackgroundJobs(kLongMs));
}

}  // namespace
}  // namespace quilmark
