#include "content/run/read_ahead.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

using std::chrono::microseconds;

TEST(DiskPace, IsSlowWhereHalfOfTheLastFilesWere) {
  DiskPace pace;
  for (int i = 0; i < 7; ++i) EXPECT_FALSE(pace.IsSlow(microseconds(5'000), 100));
  EXPECT_TRUE(pace.IsSlow(microseconds(5'000), 100));
  for (int i = 0; i < 8; ++i) pace.IsSlow(microseconds(10), 100);
  EXPECT_FALSE(pace.IsSlow(microseconds(10), 100));
}

TEST(DiskPace, OfLargeFilesInMemoryIsNot) {
  DiskPace pace;
  for (int i = 0; i < 50; ++i) EXPECT_FALSE(pace.IsSlow(microseconds(10'000), 20'000'000));
}

TEST(ReadAhead, TakesTheFilesInFrontOfTheWorkerOnceEach) {
  ContentSlice slice;
  slice.next = 10;
  slice.end = 100;
  EXPECT_EQ(ClaimAhead(slice), std::nullopt) << "nobody waits";
  slice.waitsForDisk = true;
  for (size_t i = 0; i < kMostFilesAhead; ++i) EXPECT_EQ(ClaimAhead(slice), 10 + i);
  EXPECT_EQ(ClaimAhead(slice), std::nullopt) << "far enough";
  slice.next = 12;
  EXPECT_EQ(ClaimAhead(slice), 10 + kMostFilesAhead);
  slice.next = 90;
  EXPECT_EQ(ClaimAhead(slice), 90u) << "never behind the worker";
  slice.next = 99;
  EXPECT_EQ(ClaimAhead(slice), 99u);
  EXPECT_EQ(ClaimAhead(slice), std::nullopt) << "never behind the end";
}

}  // namespace
}  // namespace quilmark
