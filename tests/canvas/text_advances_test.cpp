#include "canvas/text_advances.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace quilmark {
namespace {

constexpr const std::span<const AdvanceRun>* kTables[] = {&kRegularAdvances, &kBoldAdvances,
                                                          &kLinkedAdvances};

TEST(TextAdvances, BeginAtTheFirstUnitAndAscend) {
  for (const auto* const table : kTables) {
    ASSERT_FALSE(table->empty());
    EXPECT_EQ(table->front().first, u'\0');
    for (size_t i = 1; i < table->size(); ++i) EXPECT_LT((*table)[i - 1].first, (*table)[i].first) << i;
  }
}

TEST(TextAdvances, OnlyTheLastTableHasAllUnits) {
  const auto lacks = [](const AdvanceRun& run) { return run.advance < 0; };
  EXPECT_GT(std::count_if(kRegularAdvances.begin(), kRegularAdvances.end(), lacks), 0);
  EXPECT_GT(std::count_if(kBoldAdvances.begin(), kBoldAdvances.end(), lacks), 0);
  EXPECT_EQ(std::count_if(kLinkedAdvances.begin(), kLinkedAdvances.end(), lacks), 0);
}

TEST(TextAdvances, HaveHeightsAndWidthsOfLetters) {
  EXPECT_GT(kTextHeight.ascent, kTextHeight.descent);
  EXPECT_GT(kTextHeight.descent, 0);
  for (const AdvanceRun& run : kRegularAdvances) EXPECT_LE(run.advance, 4 * kAdvanceParts) << +run.first;
}

}  // namespace
}  // namespace quilmark
