// Rows of one volume with sizes and dates, and what filters leave of them.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/background.h"
#include "search/attributes/attr_cache.h"
#include "search/filter/filters.h"
#include "support/gate.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {

using Names = std::vector<std::u16string>;
inline constexpr int64_t kMB = 0x10'0000;
inline constexpr FileTime kDay = 24 * 3'600 * kFileTimePerSecond;

// This moment, and one of the next day where the day ends within 50 seconds: what is of today then stays
// so while a test runs.
inline FileTime NowAndNotAtMidnight() {
  EXPECT_TRUE(WaitUntil([] {
    const LocalTime now = NowLocal();
    return now.hour != 23 || now.minute != 59 || now.second < 10;
  }));
  return NowFileTime();
}

class Filters : public testing::Test {
 protected:
  Filters() { volume = AddVolume(Engine(), MakeTestVolume(u"Q:")); }
  ~Filters() override {
    FollowNewResults(KeepFiltered::kNo, 0);
    TheSearch().ActiveCategory = 0;
  }
  void Add(std::u16string_view name, int64_t size = 1, FileTime modified = 1, FileTime created = 1) {
    const uint64_t frn = 1'000 + rows->size();
    rows->push_back({volume, AddFile(*volume, name, kRootFrnOfTests, frn)});
    StoreAttr(*volume, frn, {.size = size, .modified = modified, .created = created, .valid = true});
  }
  void AddDir(std::u16string_view name) { rows->push_back({volume, AddFolder(*volume, name)}); }
  void Hold() { HoldRows(rows); }
  // As a sort by the column publishes.
  void Reorder(int column) {
    rows = std::make_shared<ResultSet>(rows->rbegin(), rows->rend());
    SetSort(column, true);
  }
  // The names that stay.
  Names Filter(FilterSettings settings) {
    Hold();
    TheSearch().ActiveCategory = settings.category;
    RefreshFilteredResultsAsync(std::move(settings));
    EXPECT_TRUE(WaitForBackgroundJobs(60'000));
    EXPECT_EQ(search.Next().message, WM_FILTER_RESULTS);
    Names names;
    for (const MatchItem& hit : *ShownResults()) names.emplace_back(NameOf(volume->records[hit.index]));
    EXPECT_EQ(DisplayCount(), names.size());
    return names;
  }

  SearchHarness search;
  VolumeIndex* volume = nullptr;
  std::shared_ptr<ResultSet> rows = std::make_shared<ResultSet>();
};

}  // namespace quilmark
