#include "platform/win32/guarded_view.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <thread>
#include <vector>

namespace quilmark {
namespace {

// What the system raises for a page of a mapped file that the disk does not give.
void RaisePageError(const char* at) {
  const ULONG_PTR facts[] = {0, reinterpret_cast<ULONG_PTR>(at), 0xC000'000E};
  RaiseException(static_cast<DWORD>(EXCEPTION_IN_PAGE_ERROR), 0, 3, facts);
}

struct Steps {
  const char* badPage = nullptr;
  int before = 0, behind = 0;
};

void LookAndFail(void* subject) {
  auto& steps = *static_cast<Steps*>(subject);
  ++steps.before;
  if (steps.badPage != nullptr) RaisePageError(steps.badPage);
  ++steps.behind;
}

TEST(GuardedView, ALookWithoutAnErrorIsTaken) {
  const char view[100] = {};
  Steps steps;
  EXPECT_TRUE(LookGuarded(view, LookAndFail, &steps));
  EXPECT_EQ(steps.behind, 1);
}

TEST(GuardedView, APageThatCannotBeReadEndsTheLookAlone) {
  const char view[100] = {};
  // More than once: what is left in the middle leaves nothing behind.
  for (int time = 0; time < 1'000; ++time) {
    Steps steps{.badPage = view + time % 100};
    EXPECT_FALSE(LookGuarded(view, LookAndFail, &steps));
    EXPECT_EQ(steps.before, 1);
    EXPECT_EQ(steps.behind, 0);
  }
  Steps steps;
  EXPECT_TRUE(LookGuarded(view, LookAndFail, &steps));
}

TEST(GuardedView, EachThreadHasItsOwn) {
  const char view[100] = {};
  std::vector<std::thread> threads;
  std::vector<int> failures(4);
  for (int& count : failures) {
    threads.emplace_back([&view, &count] {
      for (int time = 0; time < 500; ++time) {
        Steps steps{.badPage = time % 2 == 0 ? view : nullptr};
        count += LookGuarded(view, LookAndFail, &steps) ? 0 : 1;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(failures, std::vector<int>(4, 250));
}

// An error of other memory is nobody's look: the next handler sees it.
bool isSeenBehind = false;
LONG CALLBACK SeeBehind(EXCEPTION_POINTERS* raised) {
  if (raised->ExceptionRecord->ExceptionCode != static_cast<DWORD>(EXCEPTION_IN_PAGE_ERROR)) {
    return EXCEPTION_CONTINUE_SEARCH;
  }
  isSeenBehind = true;
  return EXCEPTION_CONTINUE_EXECUTION;
}

TEST(GuardedView, AnErrorOfOtherMemoryGoesItsWay) {
  const char view[100] = {}, other[100] = {};
  void* const handler = AddVectoredExceptionHandler(0, SeeBehind);
  Steps steps{.badPage = other};
  EXPECT_TRUE(LookGuarded(view, LookAndFail, &steps));
  EXPECT_TRUE(isSeenBehind);
  EXPECT_EQ(steps.behind, 1);
  isSeenBehind = false;
  RaisePageError(view);  // nobody looks
  EXPECT_TRUE(isSeenBehind);
  RemoveVectoredExceptionHandler(handler);
}

}  // namespace
}  // namespace quilmark
