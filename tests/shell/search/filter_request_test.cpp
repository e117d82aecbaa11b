#include "shell/search/filter_request.h"

#include <gtest/gtest.h>

#include "search/attributes/attr_cache.h"
#include "shell/window_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;
using Names = std::vector<std::u16string>;

constexpr int kFolders = 1, kDocuments = 2;

class FilterRequest : public testing::Test {
 protected:
  // Holds a folder, a letter of 1 byte and a table of 2,000,000 bytes.
  FilterRequest() {
    harness.engine.filters = true;
    app.search.isBoxEnabled = true;
    app.search.rows.scrollY = 440;
    volume = AddVolume(Engine(), MakeTestVolume());
    auto rows = std::make_shared<ResultSet>();
    rows->push_back({volume, AddFolder(*volume, u"papers")});
    rows->push_back({volume, AddSized(u"letter.txt", 1)});
    rows->push_back({volume, AddSized(u"table.xlsx", 2'000'000)});
    HoldRows(rows);
  }
  uint32_t AddSized(std::u16string_view name, int64_t size) {
    const uint32_t index = AddFile(*volume, name);
    StoreAttr(*volume, volume->records[index].frn,
              {.size = size, .modified = 1, .created = 1, .valid = true});
    return index;
  }
  // Of the rows that the list shows once the filter has told of them.
  Names NamesAfterTheFilter() {
    EXPECT_EQ(harness.search.Next().message, WM_FILTER_RESULTS);
    Names names;
    for (const MatchItem& hit : *ShownResults()) {
      names.emplace_back(NameOf(volume->records[hit.index]));
    }
    return names;
  }

  WindowHarness harness;
  RecordingWindow& window = harness.window;
  AppState& app = harness.app;
  VolumeIndex* volume = nullptr;
};

TEST_F(FilterRequest, ATagNarrowsFromTheTopOfTheListAndGivesTheSearchBoxTheFocus) {
  harness.Carry(SelectFilterTag(app.search, harness.Context(), kDocuments));
  EXPECT_EQ(TheSearch().ActiveCategory, kDocuments);
  EXPECT_EQ(app.search.rows.scrollY, 0);
  EXPECT_EQ(window.calls,
            (Calls{"RedrawTags", "FocusSearchBox", "SyncBars", "Rehover", "InvalidateList"}));
  EXPECT_EQ(NamesAfterTheFilter(), (Names{u"letter.txt", u"table.xlsx"}));
  harness.Carry(SelectFilterTag(app.search, harness.Context(), kFolders));
  EXPECT_EQ(NamesAfterTheFilter(), Names{u"papers"});
}

TEST_F(FilterRequest, ATagLeavesASearchBoxAloneThatTakesNoText) {
  app.search.isBoxEnabled = false;
  harness.Carry(SelectFilterTag(app.search, harness.Context(), kDocuments));
  EXPECT_EQ(window.calls, (Calls{"RedrawTags", "SyncBars", "Rehover", "InvalidateList"}));
}

TEST_F(FilterRequest, ATagThatIsNoneMeansAllFiles) {
  const auto tags = static_cast<int>(CurrentCategories()->size());
  for (const int index : {-1, tags, 100'000}) {
    TheSearch().ActiveCategory = kDocuments;
    harness.Carry(SelectFilterTag(app.search, harness.Context(), index));
    EXPECT_EQ(TheSearch().ActiveCategory, 0) << index;
    EXPECT_EQ(NamesAfterTheFilter().size(), 3u) << index;
  }
}

TEST_F(FilterRequest, PresetsNarrowFromTheTopOfTheList) {
  CurrentWindowSettings.sizePreset = k1To100MB;
  harness.Carry(ApplyFilters(app.search, harness.Context()));
  EXPECT_EQ(app.search.rows.scrollY, 0);
  EXPECT_EQ(window.calls, (Calls{"SyncBars", "Rehover", "InvalidateList"}));
  EXPECT_EQ(NamesAfterTheFilter(), Names{u"table.xlsx"});
}

TEST_F(FilterRequest, TakesEveryChoiceOfTheBar) {
  TheSearch().ActiveCategory = kDocuments;
  CurrentWindowSettings.sizePreset = kCustomSize;
  CurrentWindowSettings.timePreset = kCustomTime;
  CurrentWindowSettings.sizeUnit = 3;
  CurrentWindowSettings.sizeRange = u"1-2";
  CurrentWindowSettings.timeStart = 20'250'102;
  CurrentWindowSettings.timeEnd = 20'250'304;
  const FilterSettings settings = CurrentFilterSettings();
  EXPECT_EQ(settings.category, kDocuments);
  EXPECT_EQ(settings.sizePreset, kCustomSize);
  EXPECT_EQ(settings.timePreset, kCustomTime);
  EXPECT_EQ(settings.sizeUnit, 3);
  EXPECT_EQ(settings.sizeText, u"1-2");
  EXPECT_EQ(settings.dateFrom, 20'250'102);
  EXPECT_EQ(settings.dateTo, 20'250'304);
}

TEST(TagCaptions, HoldNameAndCountOfEachCategory) {
  InstallCategories({{u"All", {}}, {u"Folders", {u".dir"}}, {u"Letters (old)", {u".txt"}}});
  EXPECT_EQ(TagCaptions({10'000'000, 2}),
            (Names{u"All\r\n(10000000)", u"Folders\r\n(2)", u"Letters (old)\r\n(0)"}));
  EXPECT_EQ(TagCaptions({1, 2, 3, 4}).size(), 3u);
  InstallCategories(DefaultCategories(false));
}

TEST(PresetItems, StandInTheOrderOfTheirValues) {
  EXPECT_EQ(SizePresetItems(), (Names{u"All", u"< 1MB", u"1~100MB", u"> 100MB", u"Custom"}));
  EXPECT_EQ(TimePresetItems(), (Names{u"All", u"Today", u"7 days", u"30 days", u"Custom"}));
  EXPECT_EQ(SizeUnitItems(), (Names{u"B", u"KB", u"MB", u"GB"}));
}

}  // namespace
}  // namespace quilmark
