// Makes the system's file calls fail, one at a time, with real files behind them. The linker leads the
// calls of a test program here (--wrap in cmake/tests.cmake); the program that is shipped knows nothing
// of it.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace quilmark {

enum class FaultKind {
  kOnce,  // the n-th call fails, and has done nothing
  kEnd,   // so does every call behind it: what is on the disk is what a program leaves that ends there
  kHalf,  // the same, but the n-th call moves half of its bytes first
  kFull,  // the n-th write moves half of its bytes, and every write behind it fails: a disk that is full
};
inline constexpr FaultKind kAllFaultKinds[] = {FaultKind::kOnce, FaultKind::kEnd, FaultKind::kHalf,
                                               FaultKind::kFull};

// In force for all threads as long as it lives; one at a time.
class SystemFaults {
 public:
  // `failing` counts from 1; 0 lets every call pass.
  explicit SystemFaults(FaultKind kind, int failing = 0);
  ~SystemFaults();
  SystemFaults(const SystemFaults&) = delete;
  SystemFaults& operator=(const SystemFaults&) = delete;

  bool HasFailed() const;                  // the call was reached
  std::vector<std::string> Calls() const;  // names of the system's functions, in order
  int OpenFiles() const;                   // opened since then and not closed

 private:
  friend struct SystemFaultSwitch;
  const FaultKind kind_;
  const int failing_;
  mutable std::mutex mutex_;
  std::vector<std::string> calls_;
  int counted_ = 0;  // of those, the ones that may fail
  std::set<std::ptrdiff_t> open_;
};

// Calls `run(failing)` with the first call failing, then with the second, and so on, until one is not
// reached. `failing(work)` does the work under the faults, sees that it leaves no file open, and returns
// whether a call failed. The number of calls that have failed.
template <typename Run>
int FailEachCall(FaultKind kind, Run run) {
  for (int number = 1;; ++number) {
    bool hasFailed = false;
    const testing::ScopedTrace trace(__FILE__, __LINE__, "failing call " + std::to_string(number));
    run([&](auto&& work) {
      const SystemFaults faults(kind, number);
      work();
      hasFailed = faults.HasFailed();
      EXPECT_EQ(faults.OpenFiles(), 0);
      return hasFailed;
    });
    if (!hasFailed) return number - 1;
  }
}

// What the wrapped calls ask.
struct SystemFaultSwitch {
  enum class Verdict { kPass, kHalf, kFail };
  enum class Moves { kNothing, kWrites };
  static Verdict Ask(const char* call, Moves moves = Moves::kNothing);
  static void Opened(std::ptrdiff_t handle);
  static void Closed(std::ptrdiff_t handle);
};

}  // namespace quilmark
