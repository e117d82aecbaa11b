#include "content/run/status_text.h"

#include <gtest/gtest.h>

#include "config/translate.h"
#include "support/search_harness.h"

namespace quilmark {
namespace {

struct ContentStatusTexts : testing::Test {
  ~ContentStatusTexts() override { translation = nullptr; }
};

TEST_F(ContentStatusTexts, AreEnglishWhereNoLanguageHasThem) {
  EXPECT_EQ(ContentStatusText(ContentStatus::kNoCandidates), u"No candidate files after filters.");
  EXPECT_EQ(ContentStatusText(ContentStatus::kStart, 12'345),
            u"Filtered 12345 files, scanning... (Esc to cancel)");
  EXPECT_EQ(ContentStatusText(ContentStatus::kProgress, 5, 12),
            u"Scanning contents... (Processed 5 / 12)");
}

TEST_F(ContentStatusTexts, AreTakenFromTheLanguageByTheirKeys) {
  translation = [](std::u16string_view key, std::u16string_view) {
    if (key == u"Status_ScanningProgressFmt") {
      return std::u16string(u"Scanning content... (processed %zu / %zu)");
    }
    return std::u16string(key);
  };
  EXPECT_EQ(ContentStatusText(ContentStatus::kProgress, 5, 12),
            u"Scanning content... (processed 5 / 12)");
  EXPECT_EQ(ContentStatusText(ContentStatus::kStart), u"Status_FilteredFilesStartScanFmt");
  EXPECT_EQ(ContentStatusText(ContentStatus::kNoCandidates), u"Status_ContentSearchNoCandidates");
}

TEST_F(ContentStatusTexts, HaveAnEnd) {
  translation = [](std::u16string_view, std::u16string_view) { return std::u16string(400, u'x'); };
  EXPECT_EQ(ContentStatusText(ContentStatus::kStart).size(), 255u);
}

TEST_F(ContentStatusTexts, ArePostedUnderTheNumberOfTheSearch) {
  SearchHarness harness;
  const Ticket ticket = SupersedeSearch();
  PostContentStatus(ticket, ContentStatus::kStart, 3);
  const PostedMessage message = harness.Next();
  EXPECT_EQ(message.message, WM_SEARCH_STATUS);
  EXPECT_EQ(message.first, ticket.Number());
  EXPECT_EQ(*TakeText(message), u"Filtered 3 files, scanning... (Esc to cancel)");
}

}  // namespace
}  // namespace quilmark
