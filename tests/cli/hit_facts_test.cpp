#include "cli/hit_facts.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(HitFacts, TimesAreIsoTextsInUtc) {
  EXPECT_EQ(FormatUtc(kFileTimeOfUnixEpoch), "1970-01-01T00:00:00.000Z");
  EXPECT_EQ(FormatUtc(FileTimeOfUnix(1'772'373'909, 250'999'999)), "2026-03-01T14:05:09.250Z");
  EXPECT_EQ(FormatUtc(FileTimeOfUnix(-1, 999'000'000)), "1969-12-31T23:59:59.999Z");
  EXPECT_EQ(FormatUtc(1), "1601-01-01T00:00:00.000Z");
}

}  // namespace
}  // namespace quilmark
