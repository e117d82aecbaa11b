#include "search/results/search_pipeline.h"

#include <gtest/gtest.h>

#include <mutex>
#include <stdexcept>

#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

class SearchPipeline : public testing::Test {
 protected:
  VolumeIndex& AddVolumeWith(std::u16string_view drive, int count, std::u16string_view name) {
    auto volume = MakeTestVolume(drive);
    for (int i = 0; i < count; ++i) AddFile(*volume, name);
    return *AddVolume(Engine(), std::move(volume));
  }
  std::vector<ResultKind> Search(std::u16string text, bool keepScroll = false) {
    DoSearchAsync(std::move(text), keepScroll, false);
    return harness.KindsUntilFinal();
  }
  SearchHarness harness;
};

using Kinds = std::vector<ResultKind>;
constexpr auto kFinal = ResultKind::kFinal;
constexpr auto kPartial = ResultKind::kPartial;

TEST_F(SearchPipeline, FewHitsGiveOneFinalSet) {
  AddVolumeWith(u"C:", 2'999, u"report.txt");
  EXPECT_EQ(Search(u"  REPORT "), Kinds{kFinal});
  EXPECT_EQ(HeldResults()->size(), 2'999u);
  EXPECT_TRUE(harness.IsQuiet());
}

TEST_F(SearchPipeline, ThreeThousandHitsGiveAPartialSetAndThenTheFinalOne) {
  AddVolumeWith(u"C:", 3'000, u"report.txt");
  EXPECT_EQ(Search(u"report"), (Kinds{kPartial, kFinal}));
  EXPECT_EQ(HeldResults()->size(), 3'000u);
}

TEST_F(SearchPipeline, PartialSetComesOnceASearch) {
  AddVolumeWith(u"C:", 20'000, u"report.txt");
  AddVolumeWith(u"D:", 20'000, u"report.txt");
  EXPECT_EQ(Search(u"report"), (Kinds{kPartial, kFinal}));
  EXPECT_EQ(HeldResults()->size(), 40'000u);
}

TEST_F(SearchPipeline, HitsComeInOrderOfVolumeAndRecord) {
  AddVolumeWith(u"D:", 2, u"x1");
  AddVolumeWith(u"C:", 1, u"x2");
  Search(u"x");
  EXPECT_EQ(harness.ShownPaths(), (std::vector<std::u16string>{u"C:\\x2", u"D:\\x1", u"D:\\x1"}));
}

TEST_F(SearchPipeline, DirectoriesAreFoundLikeFiles) {
  auto volume = MakeTestVolume();
  AddFolder(*volume, u"photos");
  AddVolume(Engine(), std::move(volume));
  Search(u"photo");
  EXPECT_EQ(harness.ShownPaths(), std::vector<std::u16string>{u"C:\\photos"});
}

TEST_F(SearchPipeline, ScopeNamesOneVolumeByItsPosition) {
  AddVolumeWith(u"C:", 1, u"x");
  AddVolumeWith(u"D:", 1, u"x");
  TheSearch().scope.scopeIndex = kScopeFirstVolume + 1;
  Search(u"x");
  EXPECT_EQ(harness.ShownPaths(), std::vector<std::u16string>{u"D:\\x"});
  TheSearch().scope.scopeIndex = kScopeFirstVolume + 2;
  Search(u"x");
  EXPECT_TRUE(HeldResults()->empty());
}

TEST_F(SearchPipeline, VolumeInARebuildIsLeftOutSilently) {
  VolumeIndex& busy = AddVolumeWith(u"C:", 1, u"x");
  AddVolumeWith(u"D:", 1, u"x");
  busy.busy = true;
  EXPECT_EQ(Search(u"x"), Kinds{kFinal});
  EXPECT_EQ(harness.ShownPaths(), std::vector<std::u16string>{u"D:\\x"});
}

TEST_F(SearchPipeline, LostVolumeIsLeftOut) {
  AddVolumeWith(u"C:", 1, u"x").valid = false;
  Search(u"x");
  EXPECT_TRUE(HeldResults()->empty());
}

TEST_F(SearchPipeline, VolumeWhoseLockIsTakenIsLeftOut) {
  VolumeIndex& locked = AddVolumeWith(u"C:", 1, u"x");
  AddVolumeWith(u"D:", 1, u"x");
  const std::unique_lock lock(locked.indexLock);
  Search(u"x");
  ASSERT_EQ(HeldResults()->size(), 1u);
  EXPECT_EQ(HeldResults()->front().volume->drive, u"D:");
}

TEST_F(SearchPipeline, NewSearchForgetsTheSortAndARepeatedOneKeepsIt) {
  AddVolumeWith(u"C:", 4'000, u"x");
  SetSort(3, true);
  Search(u"x", true);
  EXPECT_EQ(SortColumn(), 3);
  Search(u"x", false);
  EXPECT_EQ(SortColumn(), -1);
}

TEST_F(SearchPipeline, StaleSearchPublishesNothing) {
  AddVolumeWith(u"C:", 5'000, u"x");
  const auto before = HeldResults();
  const SearchJob job{.ticket = SupersedeSearch(), .text = u"x"};
  SupersedeSearch();
  RunSearch(job);
  EXPECT_EQ(HeldResults(), before);
  EXPECT_TRUE(harness.IsQuiet());
}

TEST_F(SearchPipeline, SearchGoneStaleBetweenPartialAndFinalKeepsThePartialSet) {
  AddVolumeWith(u"C:", 5'000, u"x");
  const Ticket ticket = SupersedeSearch();
  EXPECT_TRUE(PublishResults(ticket, kPartial, std::make_shared<ResultSet>(3), KeepSort::kNo));
  SupersedeSearch();
  EXPECT_FALSE(PublishResults(ticket, kFinal, std::make_shared<ResultSet>(5), KeepSort::kNo));
  EXPECT_EQ(HeldResults()->size(), 3u);
}

TEST_F(SearchPipeline, NothingIsPublishedAfterTheEndHasBegun) {
  AddVolumeWith(u"C:", 1, u"x");
  ShutdownRequested = true;
  RunSearch({.ticket = SupersedeSearch(), .text = u"x"});
  EXPECT_FALSE(PublishResults(LatestSearch(), kFinal, std::make_shared<ResultSet>(), KeepSort::kNo));
  EXPECT_TRUE(harness.IsQuiet());
}

TEST_F(SearchPipeline, TextBeforeTheIndexIsReadyIsTriedAgainByTimer) {
  DoSearchAsync(u" x ", false, false);
  EXPECT_EQ(harness.statusKeys, std::vector<std::u16string>{u"Status_IndexNotReadyRetry"});
  EXPECT_EQ(harness.timerDelays, std::vector<uint32_t>{350});
  EXPECT_EQ(TheSearch().CurrentQueryText, u"x");
  AddVolumeWith(u"C:", 1, u"x");
  DoSearchAsync(TheSearch().CurrentQueryText, false, false);
  EXPECT_EQ(harness.KindsUntilFinal(), Kinds{kFinal});
  EXPECT_EQ(HeldResults()->size(), 1u);
}

TEST_F(SearchPipeline, EmptyTextShowsTheRecentFiles) {
  VolumeIndex& volume = AddVolumeWith(u"C:", 9, u"x");
  TheSearch().hooks.recentResults = [&] { return std::make_shared<ResultSet>(ResultSet{{&volume, 4}}); };
  DoSearchAsync(u" \t", false, false);
  EXPECT_EQ(harness.KindsUntilFinal(), Kinds{kFinal});
  ASSERT_EQ(HeldResults()->size(), 1u);
  EXPECT_EQ(HeldResults()->front().index, 4u);
}

TEST_F(SearchPipeline, EmptyTextKeepsTheWholeIndexWhileTheRecentViewIsSuppressed) {
  AddVolumeWith(u"C:", 3, u"x");
  RefreshSearchResultsAfterIndexUpdate();
  harness.KindsUntilFinal();
  EXPECT_EQ(HeldResults()->size(), 4u);  // the root folder too
  const auto shown = HeldResults();
  DoSearchAsync(u"", false, false);
  EXPECT_TRUE(harness.IsQuiet());
  EXPECT_EQ(HeldResults(), shown);
}

TEST_F(SearchPipeline, SearchWithTextEndsTheSuppression) {
  AddVolumeWith(u"C:", 1, u"x");
  TheSearch().SuppressRecentView = true;
  Search(u"x");
  EXPECT_FALSE(TheSearch().SuppressRecentView);
}

TEST_F(SearchPipeline, RecentViewIsShownWhateverTheText) {
  AddVolumeWith(u"C:", 1, u"x");
  TheSearch().hooks.recentResults = [] { return std::make_shared<ResultSet>(); };
  DoSearchAsync(u"x", false, true);
  EXPECT_EQ(harness.KindsUntilFinal(), Kinds{kFinal});
  EXPECT_TRUE(HeldResults()->empty());
}

TEST_F(SearchPipeline, RefreshRunsTheQueryOfTheBox) {
  AddVolumeWith(u"C:", 2, u"x");
  AddVolumeWith(u"D:", 2, u"y");
  harness.searchBox = u" y ";
  RefreshSearchResultsAfterIndexUpdate();
  harness.KindsUntilFinal();
  EXPECT_EQ(HeldResults()->size(), 2u);
}

TEST_F(SearchPipeline, RefreshOfAnEmptyBoxKeepsTheSortAndAsksForItAgain) {
  AddVolumeWith(u"C:", 2, u"x");
  SetSort(3, false);
  RefreshSearchResultsAfterIndexUpdate();
  const PostedMessage results = harness.Next();
  EXPECT_EQ(results.message, WM_SEARCH_RESULTS);
  EXPECT_EQ(results.second, 0);
  const PostedMessage resort = harness.Next();
  EXPECT_EQ(resort.message, WM_RESORT_RESULTS);
  EXPECT_EQ(resort.first, 3u);
  EXPECT_EQ(resort.second, 0);
  EXPECT_EQ(SortColumn(), 3);
  EXPECT_FALSE(SortAscending());
}

TEST_F(SearchPipeline, RefreshAsksForTheSortsAgainThatNeedTheDiskAlone) {
  AddVolumeWith(u"C:", 2, u"x");
  for (const int column : {0, 1, 2, 3, 4, 5}) {
    SetSort(column, true);
    RefreshSearchResultsAfterIndexUpdate();
    harness.KindsUntilFinal();
    if (column >= 2 && column <= 4) {
      const PostedMessage resort = harness.Next();
      EXPECT_EQ(resort.message, WM_RESORT_RESULTS);
      EXPECT_EQ(resort.first, static_cast<uint64_t>(column));
    }
    EXPECT_TRUE(harness.IsQuiet());
  }
}

TEST_F(SearchPipeline, AProgramThatAsksOnceWaitsForAWriter) {
  VolumeIndex& volume = AddVolumeWith(u"C:", 2, u"x");
  TheSearch().options.waitsForWriters = true;
  std::unique_lock writer(volume.indexLock);
  DoSearchAsync(u"x", false, false);
  AddFile(volume, u"x");
  writer.unlock();
  harness.KindsUntilFinal();
  EXPECT_EQ(HeldResults()->size(), 3u);
}

TEST_F(SearchPipeline, ContentQueryGoesToItsHook) {
  VolumeIndex& volume = AddVolumeWith(u"C:", 9, u"x.txt");
  ContentQuery asked;
  TheSearch().hooks.contentExts = [] { return std::vector<std::u16string>{u".md"}; };
  TheSearch().hooks.searchContent = [&](const SearchJob&, const ContentQuery& query,
                                        const SearchScope&) {
    asked = query;
    return std::make_shared<ResultSet>(ResultSet{{&volume, 2}});
  };
  EXPECT_EQ(Search(u"s:Word"), Kinds{kFinal});
  EXPECT_EQ(asked.Groups, (QueryGroups{{u"Word"}}));
  EXPECT_EQ(asked.Exts, std::vector<std::u16string>{u".md"});
  EXPECT_EQ(HeldResults()->size(), 1u);
}

TEST_F(SearchPipeline, ExceptionInAScanLeavesTheOldListAndPostsNothing) {
  AddVolumeWith(u"C:", 1, u"x");
  Search(u"x");
  const auto shown = HeldResults();
  TheSearch().hooks.searchContent = [](const SearchJob&, const ContentQuery&,
                                       const SearchScope&) -> std::shared_ptr<ResultSet> {
    throw std::runtime_error("broken");
  };
  DoSearchAsync(u"s:word", false, false);
  EXPECT_TRUE(harness.IsQuiet());
  EXPECT_EQ(HeldResults(), shown);
}

TEST_F(SearchPipeline, LongestQueryOfTheBoxIsSearched) {
  auto volume = MakeTestVolume();
  const std::u16string name(255, u'x');
  AddFile(*volume, name);
  AddVolume(Engine(), std::move(volume));
  Search(name);
  EXPECT_EQ(HeldResults()->size(), 1u);
}

}  // namespace
}  // namespace quilmark
