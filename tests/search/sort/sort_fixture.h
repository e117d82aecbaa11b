// A volume Q: whose files have what a test says, and its rows as the held results.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "platform/background.h"
#include "platform/text_file.h"
#include "search/attributes/attr_cache.h"
#include "search/sort/sort.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {

using Names16 = std::vector<std::u16string>;

struct SortFixture : testing::Test {
  SortFixture() {
    volume = AddVolume(Engine(), MakeTestVolume(u"Q:"));
    Engine().ready = true;
  }
  uint32_t AddWith(std::u16string_view name, int64_t size, FileTime modified = 1, FileTime created = 1) {
    const uint64_t frn = 1'000 + next++;
    const uint32_t index = AddFile(*volume, name, kRootFrnOfTests, frn);
    StoreAttr(*volume, frn, {.size = size, .modified = modified, .created = created, .valid = true});
    return index;
  }
  void Hold(const std::vector<uint32_t>& indices) {
    auto rows = std::make_shared<ResultSet>();
    for (const uint32_t index : indices) rows->push_back({volume, index});
    HoldRows(rows);
  }
  static Names16 NamesOf(const ResultSet& rows) {
    Names16 names;
    for (const MatchItem& hit : rows) names.emplace_back(NameOf(hit.volume->records[hit.index]));
    return names;
  }
  static Names16 Names() { return NamesOf(*HeldResults()); }
  static void SortBy(int column) {
    DoSortAsync(column, Direction::kByClick);
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  }
  static std::u16string Metrics() {
    return ReadTextFile(GetConfigDirectory() + u"\\perf_metrics.log").value_or(u"");
  }

  ScratchConfig config;
  SearchHarness search;
  VolumeIndex* volume = nullptr;
  uint64_t next = 0;
};

}  // namespace quilmark
