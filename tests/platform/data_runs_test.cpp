#include "platform/ntfs/data_runs.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

namespace quilmark {
namespace {

// In a block of its own, so that a read behind it is seen.
std::vector<std::byte> Runs(std::initializer_list<int> bytes) {
  std::vector<std::byte> runs;
  for (const int byte : bytes) runs.push_back(static_cast<std::byte>(byte));
  runs.shrink_to_fit();
  return runs;
}

TEST(DataRuns, FollowOneAnotherByTheirDifferences) {
  const auto runs = Runs({0x11, 5, 100, 0x01, 3, 0x11, 2, 0xF6, 0});
  RunCursor cursor{.runs = runs};
  const auto first = NextRun(cursor), hole = NextRun(cursor), last = NextRun(cursor);
  ASSERT_TRUE(first && hole && last);
  EXPECT_EQ(first->cluster, ClusterNumber(100));
  EXPECT_EQ(first->clusters, ClusterCount(5));
  EXPECT_EQ(hole->cluster, std::nullopt);
  EXPECT_EQ(hole->clusters, ClusterCount(3));
  EXPECT_EQ(last->cluster, ClusterNumber(90)) << "10 below the first";
  EXPECT_FALSE(NextRun(cursor));
  EXPECT_FALSE(cursor.malformed);
}

TEST(DataRuns, WithoutAnEndMarkEndWhereTheyEnd) {
  const auto runs = Runs({0x11, 5, 100});
  RunCursor cursor{.runs = runs};
  EXPECT_TRUE(NextRun(cursor));
  EXPECT_FALSE(NextRun(cursor));
  EXPECT_FALSE(cursor.malformed);
}

TEST(DataRuns, ThatDoNotFitAreMalformed) {
  for (const auto& runs : {Runs({0x10, 5}),                                // no length
                           Runs({0x19, 1, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0}),  // a length of 9 bytes
                           Runs({0x91, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}),  // a place of 9 bytes
                           Runs({0x11, 5}),                                // the place is missing
                           Runs({0x14, 5, 0}),                             // so is a part of the length
                           Runs({0x11, 0, 100, 0}),                        // no clusters
                           Runs({0x11, 0xFF, 100, 0}),                     // fewer than none
                           Runs({0x11, 5, 0x80, 0})}) {                    // before the first cluster
    RunCursor cursor{.runs = runs};
    EXPECT_FALSE(NextRun(cursor));
    EXPECT_TRUE(cursor.malformed);
  }
}

}  // namespace
}  // namespace quilmark
