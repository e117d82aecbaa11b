// The window for minutes or hours, searched once a second, over a drive whose files change all the time.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "window/window_program.h"

namespace quilmark {
namespace {

constexpr uint32_t kChangesPerSecond = 200;
constexpr int kWarmUpMinutes = 10;
// What a look may catch beyond the level: a thread and a picture that are about to go.
constexpr int64_t kMoreHandles = 12, kMoreObjects = 6, kMoreThreads = 4, kMoreKb = 16 * 1'024;
// A record, its name and its signatures; a name that was changed is a new one.
constexpr int64_t kBytesOfARecord = 400;

struct Level {
  int64_t handles = 0, objects = 0, threads = 0, kb = 0, records = 0;
};

Level Look(WindowProgram& program) {
  return {.handles = program.Ask(Probe::kHandles),
          .objects = program.Ask(Probe::kGdiObjects),
          .threads = program.Ask(Probe::kThreads),
          .kb = program.Ask(Probe::kPrivateKb),
          .records = program.Ask(Probe::kRecords)};
}

Level Highest(const Level& one, const Level& other) {
  return {.handles = std::max(one.handles, other.handles),
          .objects = std::max(one.objects, other.objects),
          .threads = std::max(one.threads, other.threads),
          .kb = std::max(one.kb, other.kb),
          .records = std::max(one.records, other.records)};
}

// One second of a user.
void UseForASecond(WindowProgram& program, uint64_t second) {
  static const wchar_t* const queries[] = {L"churn",        L"a",     L"xyz",
                                           L"n:\\ churn b", L"*.txt", L"churn q"};
  const int64_t before = program.Ask(Probe::kSearchGeneration);
  SendMessageW(program.SearchBox(), WM_SETTEXT, 0,
               reinterpret_cast<LPARAM>(queries[second % std::size(queries)]));
  program.Press(VK_RETURN);
  WaitUntil("the results", [&] {
    const int64_t generation = program.Ask(Probe::kSearchGeneration);
    return generation > before && program.Ask(Probe::kShownGeneration) == generation;
  });
  if (second % 3 == 0) program.Ask(Probe::kShowRow, static_cast<uint32_t>(second * 37 % 5'000));
  if (second % 20 == 0) program.Ask(Probe::kSetView, static_cast<uint32_t>(second / 20 % 3));
  if (second % 30 == 0) program.Ask(Probe::kSwitchTheme, 1);
}

void Print(uint64_t minute, const Level& level) {
  std::printf("minute %3u: %5d handles, %5d GDI objects, %3d threads, %7d KB, %8d records\n",
              static_cast<unsigned>(minute), static_cast<int>(level.handles),
              static_cast<int>(level.objects), static_cast<int>(level.threads),
              static_cast<int>(level.kb), static_cast<int>(level.records));
  std::fflush(stdout);
}

TEST(Soak, HoldsNoMoreThanInItsFirstMinutes) {
  const char* const text = std::getenv("QUILMARK_SOAK_MINUTES");
  const int minutes = std::max(text != nullptr ? std::atoi(text) : 60, 3);
  const int warmUp = std::min(kWarmUpMinutes, minutes / 3);
  const ScopedEnvironment churn(kChurnVariable, std::to_string(kChangesPerSecond));
  WindowProgram program;
  program.StartAndWait();
  Level first, last;
  uint64_t second = 0;
  for (int minute = 1; minute <= minutes && !testing::Test::HasFailure(); ++minute) {
    Level highest;
    const ULONGLONG end = GetTickCount64() + 60'000;
    while (GetTickCount64() < end && !testing::Test::HasFailure()) {
      const ULONGLONG next = GetTickCount64() + 1'000;
      UseForASecond(program, second++);
      if (second % 5 == 0) highest = Highest(highest, Look(program));
      if (const ULONGLONG now = GetTickCount64(); now < next) Sleep(static_cast<DWORD>(next - now));
    }
    Print(static_cast<uint64_t>(minute), highest);
    (minute <= warmUp ? first : last) = minute <= warmUp ? Highest(first, highest) : highest;
  }
  EXPECT_LE(last.handles, first.handles + kMoreHandles);
  EXPECT_LE(last.objects, first.objects + kMoreObjects);
  EXPECT_LE(last.threads, first.threads + kMoreThreads);
  const int64_t added = last.records - first.records;
  EXPECT_GT(added, 0) << "the drive did not change";
  EXPECT_LE(last.kb, first.kb + kMoreKb + 2 * added * kBytesOfARecord / 1'024)
      << "as many renames as new files";
  program.Exit();
  EXPECT_EQ(program.WaitForEnd(), 0u);
}

}  // namespace
}  // namespace quilmark
