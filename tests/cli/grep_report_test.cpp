#include "cli/grep_report.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(GrepHits, AreLinesOfText) {
  EXPECT_EQ(FormatGrepHit(u"C:\\a.txt", std::nullopt, {.drivePaths = true}), "C:\\a.txt\n");
  EXPECT_EQ(FormatGrepHit(u"C:\\a.txt", FileLine{12, "a word\there"}, {.drivePaths = true}),
            "C:\\a.txt:12:a word\there\n");
  EXPECT_EQ(
      FormatGrepHit(u"C:\\a.txt", FileLine{1, "\x1b[31mred"}, {.drivePaths = true, .isShown = true}),
      "C:\\a.txt:1:?[31mred\n");
}

TEST(GrepHits, AreObjectsOfJson) {
  const HitFormat json{.json = true, .drivePaths = true};
  EXPECT_EQ(FormatGrepHit(u"C:\\a.txt", std::nullopt, json),
            "{\"path\":\"C:\\\\a.txt\",\"dir\":false}\n");
  EXPECT_EQ(FormatGrepHit(u"C:\\a.txt", FileLine{3, "\"x\""}, json),
            "{\"path\":\"C:\\\\a.txt\",\"dir\":false,\"line\":3,\"text\":\"\\\"x\\\"\"}\n");
}

TEST(GrepFigures, AreToldWhileItGoesOn) {
  TreeFigures figures;
  EXPECT_EQ(GrepProgress(figures), "0 files, 0 hits");
  figures.files = 1;
  figures.outcomes[static_cast<size_t>(FileMatch::kHit)] = 1;
  EXPECT_EQ(GrepProgress(figures), "1 file, 1 hit");
}

TEST(GrepFigures, SayWhatCouldNotBeSearchedAndWhy) {
  TreeFigures figures;
  figures.files = 10;
  figures.outcomes[static_cast<size_t>(FileMatch::kMiss)] = 5;
  EXPECT_EQ(GrepSummary(figures), "");
  figures.outcomes[static_cast<size_t>(FileMatch::kCannotOpen)] = 2;
  figures.outcomes[static_cast<size_t>(FileMatch::kTooLarge)] = 1;
  figures.unlistedFolders = 1;
  EXPECT_EQ(GrepSummary(figures),
            "quilmark: 3 files not searched: 2 cannot be opened, 1 larger than --max-size\n"
            "quilmark: 1 folder cannot be listed\n");
}

}  // namespace
}  // namespace quilmark
