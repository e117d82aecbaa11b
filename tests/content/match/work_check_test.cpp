#include "content/match/work_check.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(WorkCheck, GoesOnUntilTheTicketIsStaleAndCountsEachStep) {
  Generation generation;
  std::atomic<uint32_t> steps = 0;
  const WorkCheck check(generation.Supersede(), &steps);
  EXPECT_TRUE(check.GoesOn());
  EXPECT_TRUE(check.GoesOn());
  generation.Supersede();
  EXPECT_FALSE(check.GoesOn());
  EXPECT_EQ(steps, 3u);
}

}  // namespace
}  // namespace quilmark
