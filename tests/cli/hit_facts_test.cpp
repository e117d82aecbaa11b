#include "cli/hit_facts.h"

#include <gtest/gtest.h>

#include "cli/hit_writer.h"

namespace quilmark {
namespace {

TEST(HitFacts, TimesAreIsoTextsInUtc) {
  EXPECT_EQ(FormatUtc(kFileTimeOfUnixEpoch), "1970-01-01T00:00:00.000Z");
  EXPECT_EQ(FormatUtc(FileTimeOfUnix(1'772'373'909, 250'999'999)), "2026-03-01T14:05:09.250Z");
  EXPECT_EQ(FormatUtc(FileTimeOfUnix(-1, 999'000'000)), "1969-12-31T23:59:59.999Z");
  EXPECT_EQ(FormatUtc(1), "1601-01-01T00:00:00.000Z");
}

TEST(HitFacts, JsonShowsNullForWhatIsNotKnown) {
  const HitFormat format{.json = true, .drivePaths = true, .facts = true};
  EXPECT_EQ(FormatHit(u"C:\\a", true, format, {}),
            R"({"path":"C:\\a","dir":true,"size":null,"modified":null,"created":null})");
  EXPECT_EQ(
      FormatHit(u"C:\\a", false, format, {.size = 5, .modified = kFileTimeOfUnixEpoch}),
      R"({"path":"C:\\a","dir":false,"size":5,"modified":"1970-01-01T00:00:00.000Z","created":null})");
}

TEST(HitFacts, OtherFormsLeaveThemOut) {
  EXPECT_EQ(FormatHit(u"C:\\a", false, {.json = true, .drivePaths = true}, {.size = 5}),
            R"({"path":"C:\\a","dir":false})");
  EXPECT_EQ(FormatHit(u"C:\\a", false, {.drivePaths = true, .facts = true}, {.size = 5}), "C:\\a");
  const std::u16string_view odd = u"C:\\a\n\x1b[2J\x7f";
  EXPECT_EQ(FormatHit(odd, false, {.drivePaths = true, .isShown = true}), "C:\\a??[2J?");
  EXPECT_EQ(FormatHit(odd, false, {.drivePaths = true}), "C:\\a\n\x1b[2J\x7f");
}

}  // namespace
}  // namespace quilmark
