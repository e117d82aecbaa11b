#include "content/run/content_search.h"

#include <gmock/gmock.h>

#include "content/run/run_fixture.h"
#include "platform/background.h"
#include "search/results/search_pipeline.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::UnorderedElementsAre;
using Paths = std::vector<std::u16string>;

// Content searches through the box, from the text to what the window is told.
struct ContentSearchTest : RunFixture {
  ContentSearchTest() {
    Engine().ready = true;
    InstallContentSearch([this] { return Settings(); });
    TheSearch().hooks.contentExts = [] { return std::vector<std::u16string>{u".txt"}; };
  }
  ContentSettings Settings() {
    ContentSettings settings;
    settings.filter = filter;
    settings.contentSearchThreads = 2;
    settings.plan = PlanFor({{u"not the query"}});
    return settings;
  }
  // What was posted in the order in which it came.
  Posted Search(std::u16string text) {
    DoSearchAsync(std::move(text), false, false);
    EXPECT_TRUE(WaitForBackgroundJobs(60'000));
    return TakePosted();
  }
  FilterSettings filter;
};

TEST_F(ContentSearchTest, FindsTheFilesThatHoldTheWords) {
  AddTextFile(u"a.txt", "some words");
  AddTextFile(u"b.txt", "other words");
  AddTextFile(u"c.md", "some words");
  const Posted posted = Search(u"s:some and words");
  EXPECT_THAT(harness.ShownPaths(), ElementsAre(u"C:\\a.txt"));
  EXPECT_EQ(posted.finals, 1);
  EXPECT_EQ(posted.texts.front(), u"Filtered 2 files, scanning... (Esc to cancel)");
  Search(u"s:words|.md,.txt");
  EXPECT_THAT(harness.ShownPaths(), UnorderedElementsAre(u"C:\\a.txt", u"C:\\b.txt", u"C:\\c.md"));
}

TEST_F(ContentSearchTest, SaysThatNoCandidateIsLeft) {
  AddTextFile(u"a.txt", "words");
  Search(u"s:words");
  const Posted posted = Search(u"s:words|.none");
  EXPECT_THAT(posted.texts, ElementsAre(u"No candidate files after filters."));
  EXPECT_EQ(posted.finals, 1);
  EXPECT_TRUE(HeldResults()->empty());
}

TEST_F(ContentSearchTest, OpensNothingThatTheFiltersLeaveOut) {
  const MatchItem small = AddTextFile(u"small.txt", "words");
  const MatchItem large = AddTextFile(u"large.txt", "words");
  volume->attrs[volume->records[small.index].frn] = {
      .size = 5, .modified = 1, .created = 1, .valid = true};
  volume->attrs[volume->records[large.index].frn] = {
      .size = 0x20'0000, .modified = 1, .created = 1, .valid = true};
  filter.sizePreset = kBelow1MB;
  filter.category = 3;
  Search(u"s:words");
  EXPECT_THAT(harness.ShownPaths(), ElementsAre(u"C:\\small.txt"));
  EXPECT_EQ(files->opened, 1u);
  filter.sizePreset = kAbove100MB;
  EXPECT_THAT(Search(u"s:words").texts, ElementsAre(u"No candidate files after filters."));
}

TEST_F(ContentSearchTest, EscLeavesWhatIsShownInPlace) {
  for (int i = 0; i < 40; ++i)
    AddTextFile(u"h" + std::u16string(1, char16_t(u'A' + i)) + u".txt", "words");
  std::atomic<int> opened = 0;
  size_t shown = 0;
  files->onOpen = [&](std::u16string_view) {
    if (++opened != 38) return;
    SupersedeSearch();
    shown = HeldResults()->size();
  };
  const Posted posted = Search(u"s:words");
  EXPECT_EQ(posted.finals, 0);
  EXPECT_EQ(HeldResults()->size(), shown);
  EXPECT_GT(shown, 0u);
}

TEST_F(ContentSearchTest, ANewSearchGivesTheFormerOneUp) {
  AddTextFile(u"a.txt", "former");
  AddTextFile(u"b.txt", "latter");
  std::atomic<bool> isFirst = true;
  files->onOpen = [&](std::u16string_view) {
    if (isFirst.exchange(false)) DoSearchAsync(u"s:latter", false, false);
  };
  const Posted posted = Search(u"s:former");
  EXPECT_EQ(posted.finals, 1);
  EXPECT_THAT(harness.ShownPaths(), ElementsAre(u"C:\\b.txt"));
}

TEST_F(ContentSearchTest, TellsTheMetricLogWhatCouldNotBeLookedAt) {
  ContentRun run;
  run.Processed = 9;
  run.outcomes[static_cast<size_t>(FileMatch::kHit)] = 2;
  run.outcomes[static_cast<size_t>(FileMatch::kPlaceholder)] = 3;
  run.outcomes[static_cast<size_t>(FileMatch::kCannotOpen)] = 4;
  EXPECT_EQ(ContentMetric(run),
            u"content_search files=9 hits=2 cannot_open=4 cannot_read=0 too_large=0 placeholders=3 "
            u"network=0 no_archive=0 hung=0");
}

}  // namespace
}  // namespace quilmark
