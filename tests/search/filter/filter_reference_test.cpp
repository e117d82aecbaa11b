// The filter and its counts against the plainest statement of what they mean, over random settings.
#include <gtest/gtest.h>

#include <algorithm>
#include <mutex>
#include <random>

#include "platform/text.h"
#include "search/attributes/attr_cache.h"
#include "search/filter/extension_table.h"
#include "search/filter/filters.h"
#include "search/results/row_runs.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using namespace std::string_literals;

constexpr FileTime kDay = 24 * 3'600 * kFileTimePerSecond;
const FileTime kNow = NowFileTime();  // dates stand half a day and more from every border

class RandomFilters : public testing::Test {
 protected:
  RandomFilters() {
    for (const char16_t* const drive : {u"Q:", u"R:", u"S:"}) {
      volumes.push_back(AddVolume(Engine(), MakeTestVolume(drive)));
    }
    for (int i = 0; i < 4'000; ++i) AddRow();
    rows.push_back({volumes[0], 1'000'000});
    rows.push_back({nullptr, 0});
    std::shuffle(rows.begin(), rows.end(), random);
  }
  ~RandomFilters() override { InstallCategories(DefaultCategories(false)); }

  template <typename Value>
  Value OneOf(std::initializer_list<Value> values) {
    return values.begin()[random() % values.size()];
  }
  std::u16string AnyExtension() {
    return std::u16string(OneOf<const char16_t*>(
        {u".txt", u".TXT", u".jpg", u".tar.gz", u".gz", u"", u".", u".html5", u".ÄB", u".manifest"}));
  }
  // Long runs of one volume, so that runs of many lengths are cut.
  void AddRow() {
    if (random() % 40 == 0) turn = random() % volumes.size();
    VolumeIndex& volume = *volumes[turn];
    const std::u16string name = RandomName(random, 5) + AnyExtension();
    const bool isFolder = random() % 8 == 0;
    const uint32_t index = isFolder ? AddFolder(volume, name) : AddFile(volume, name);
    const AttrEntry entry = {.size = OneOf<int64_t>({0, 1, 0xF'FFFF, 0x10'0000, 0x640'0000, 0x640'0001}),
                             .modified = OneOf<FileTime>(
                                 {0, kNow - 8 * kDay, kNow - kDay / 2, kNow + kDay, kNow - 40 * kDay}),
                             .created = OneOf<FileTime>({0, kNow - 2 * kDay, kNow}),
                             .valid = true};
    if (random() % 4 != 0) StoreAttr(volume, volume.records[index].frn, entry);
    if (random() % 10 == 0) MarkDeleted(volume, index);
    rows.push_back({&volume, index});
  }
  FilterTable AnyTable() {
    FilterTable table = {{u"All", {}}, {u"Folders", {u".dir"}}};
    for (auto count = random() % 4; count != 0; --count) {
      FilterCategory row{u"row", {}};
      for (auto names = random() % 4; names != 0; --names) {
        const std::u16string extension = FoldText(AnyExtension());
        if (!extension.empty()) row.extensions.push_back(extension);
      }
      table.push_back(row);
    }
    return table;
  }
  FilterContext AnyContext() {
    InstallCategories(AnyTable());
    const auto rowCount = static_cast<int>(CurrentCategories()->size());
    FilterSettings settings = {
        .category = static_cast<int>(random() % 6) % rowCount,
        .sizePreset = OneOf({kAnySize, kBelow1MB, k1To100MB, kAbove100MB, kCustomSize}),
        .timePreset = OneOf({kAnyTime, kAnyTime, kToday, k7Days, k30Days}),
        .sizeUnit = static_cast<int>(random() % 3),
        .sizeText = OneOf<const char16_t*>({u"1-", u"-1", u"0-100", u"9-1", u""})};
    FilterContext context = MakeFilterContext(settings, kNow);
    context.usesCreated = random() % 2 == 0;
    return context;
  }

  SearchHarness search;
  std::mt19937 random{3};
  std::vector<VolumeIndex*> volumes;
  size_t turn = 0;
  ResultSet rows;
};

bool IsOfCategory(const FilterCategory& category, std::u16string_view name) {
  const size_t dot = name.rfind(u'.');
  if (dot == std::u16string_view::npos) return false;
  return std::any_of(
      category.extensions.begin(), category.extensions.end(),
      [&](const std::u16string& extension) { return EqualNoCase(extension, name.substr(dot)); });
}

// What a file's size and date are known to be; empty where the disk would have to tell.
std::optional<AttrEntry> Known(const FilterContext& context, const MatchItem& row, uint64_t frn) {
  const auto found = row.volume->attrs.find(frn);
  if (found == row.volume->attrs.end()) return std::nullopt;
  const FileTime date = context.usesCreated ? found->second.created : found->second.modified;
  if (context.settings.timePreset != kAnyTime && date == 0) return std::nullopt;
  return found->second;
}

bool PassesReference(const FilterContext& context, const AttrEntry& entry) {
  constexpr int64_t kMB = 0x10'0000;
  const int64_t size = entry.size;
  const bool bySize[] = {true, size < kMB, size >= kMB && size <= 100 * kMB, size > 100 * kMB,
                         !context.range || ((context.range->least < 0 || size >= context.range->least) &&
                                            (context.range->most < 0 || size <= context.range->most))};
  const FileTime date = context.usesCreated ? entry.created : entry.modified;
  const bool isKnown = date != 0;
  const bool byTime[] = {true, isKnown && date >= context.today, isKnown && date + 7 * kDay >= kNow,
                         isKnown && date + 30 * kDay >= kNow};
  return bySize[context.settings.sizePreset] && byTime[context.settings.timePreset];
}

// Of files that nothing is known of the disk knows nothing either: they have size 0 and no date.
bool StaysReference(const FilterContext& context, const MatchItem& row) {
  if (row.volume == nullptr || row.index >= row.volume->records.size()) return false;
  const FileRecord& record = row.volume->records[row.index];
  if (record.deleted) return false;
  const FilterSettings& settings = context.settings;
  const bool hasPresets = settings.sizePreset != kAnySize || settings.timePreset != kAnyTime;
  const FilterCategory& category = (*context.categories)[static_cast<size_t>(settings.category)];
  const bool selectsFolders = settings.category != 0 && IsFolderCategory(category);
  if (record.isDirectory) return !hasPresets && (selectsFolders || settings.category == 0);
  if (settings.category != 0 && (selectsFolders || !IsOfCategory(category, NameOf(record))))
    return false;
  if (!hasPresets) return true;
  return PassesReference(context, Known(context, row, record.frn).value_or(AttrEntry{}));
}

TEST_F(RandomFilters, KeepWhatThePlainTestKeeps) {
  size_t kept = 0, dropped = 0;
  for (int round = 0; round < 60; ++round) {
    const FilterContext context = AnyContext();
    ResultSet expected;
    for (const MatchItem& row : rows) {
      if (StaysReference(context, row)) expected.push_back(row);
    }
    const auto actual = FilterRows(context, rows, TheSearch().FilteredResults.Latest());
    ASSERT_TRUE(actual.has_value());
    ASSERT_EQ(*actual, expected) << "category " << context.settings.category << " size "
                                 << context.settings.sizePreset << " time "
                                 << context.settings.timePreset;
    ResultSet oneByOne;
    for (const MatchItem& row : rows) {
      if (PassesFilter(context, row)) oneByOne.push_back(row);
    }
    ASSERT_EQ(oneByOne, expected);
    kept += expected.size();
    dropped += rows.size() - expected.size();
  }
  EXPECT_GT(kept, rows.size());
  EXPECT_GT(dropped, rows.size());
}

TEST_F(RandomFilters, CountWhatThePlainTestCounts) {
  HoldRows(std::make_shared<const ResultSet>(rows));
  uint64_t passing = 0;
  for (int round = 0; round < 60; ++round) {
    FilterContext context = AnyContext();
    context.settings.timePreset = round % 2 == 0 ? kAnyTime : k30Days;
    context = MakeFilterContext(context.settings, NowFileTime());
    const FilterTable& table = *context.categories;
    const bool hasPresets = context.settings.HasSizeOrTime();
    FilterCounts expected{.byCategory = std::vector<uint64_t>(table.size())};
    for (const MatchItem& row : rows) {
      if (row.volume == nullptr || row.index >= row.volume->records.size()) continue;
      const FileRecord& record = row.volume->records[row.index];
      if (record.deleted || NameOf(record).empty()) continue;
      const auto known = Known(context, row, record.frn);
      const bool acts = hasPresets && (ActsOnSize(context) || ActsOnTime(context));
      if (acts && !record.isDirectory && !known) expected.isIncomplete = true;
      if (hasPresets && record.isDirectory) continue;
      if (acts && (!known || !PassesPresets(context, known->size, known->modified))) continue;
      ++expected.byCategory[0];
      for (size_t i = 1; i < table.size(); ++i) {
        const bool belongs =
            record.isDirectory ? IsFolderCategory(table[i]) : IsOfCategory(table[i], NameOf(record));
        expected.byCategory[i] += belongs ? 1 : 0;
      }
    }
    const FilterCounts actual = UpdateFilterCounts(context.settings);
    ASSERT_EQ(actual.byCategory, expected.byCategory) << round;
    ASSERT_EQ(actual.isIncomplete, expected.isIncomplete) << round;
    passing += actual.byCategory[0];
  }
  EXPECT_GT(passing, rows.size());
}

TEST_F(RandomFilters, EndWhenTheyAreStale) {
  EXPECT_FALSE(FilterRows(AnyContext(), rows, StaleTicket()).has_value());
}

TEST(RowRuns, CoverEveryRowInOrder) {
  VolumeIndex volumes[2];
  std::mt19937 random(5);
  std::vector<MatchItem> rows;
  for (uint32_t i = 0; i < 20'000; ++i) rows.push_back({&volumes[random() % 300 == 0], i});
  for (uint32_t i = 0; i < 600; ++i) rows.push_back({&volumes[1], i});
  std::vector<MatchItem> seen;
  size_t longest = 0;
  ForEachRun(rows, [&](RowRun run) {
    for (const MatchItem& row : run) EXPECT_EQ(row.volume, run[0].volume);
    seen.insert(seen.end(), run.begin(), run.end());
    longest = std::max(longest, run.size());
    return true;
  });
  EXPECT_EQ(seen, rows);
  EXPECT_EQ(longest, kRowsARun);
}

TEST(RowRuns, StopWhenTold) {
  VolumeIndex volumes[2];
  const std::vector<MatchItem> rows = {{&volumes[0], 0}, {&volumes[1], 0}};
  int calls = 0;
  EXPECT_FALSE(ForEachRun(rows, [&calls](RowRun) { return ++calls > 1; }));
  EXPECT_EQ(calls, 1);
}

TEST(ExtensionTable, TellsExtensionsApartThatLookAlike) {
  const FilterTable rows = {{u"a", {u".a", u".abcd", u".abcde"}},
                            {u"b", {u".abcd", u".B", u"none", u"."}}};
  const ExtensionTable table = MakeExtensionTable(rows);
  const auto rowsOf = [&table](std::u16string_view name) {
    const uint32_t id = ExtensionIdOf(table, name);
    return id == table.None() ? std::vector<uint32_t>{99} : table.categoriesById[id];
  };
  using Rows = std::vector<uint32_t>;
  EXPECT_EQ(rowsOf(u"x.a"), Rows{0});
  EXPECT_EQ(rowsOf(u"x.abcd"), (Rows{0, 1}));
  EXPECT_EQ(rowsOf(u"x.abcde"), Rows{0});
  EXPECT_EQ(rowsOf(u".b"), Rows{1});
  EXPECT_EQ(rowsOf(u"x."), Rows{1});
  const std::u16string withNul = {u'x', u'.', u'a', u'\0'};
  for (const std::u16string& name :
       {u"x.abcdef"s, u"a"s, u""s, u"none"s, u"x.a.c"s, u"x.abc"s, withNul}) {
    EXPECT_EQ(rowsOf(name), Rows{99}) << testing::PrintToString(name);
  }
}

TEST(ExtensionTable, AgreesWithAPlainLook) {
  std::mt19937 random(9);
  const auto anyText = [&random](size_t longest) {
    std::u16string text;
    constexpr char16_t kUnits[] = {u'.', u'.', u'a', u'b', u'/', u'\0', 0x802E, 0x2E00, 0xFFFF};
    while (text.size() < longest && random() % 8 != 0) text += kUnits[random() % std::size(kUnits)];
    return text;
  };
  size_t found = 0;
  for (int round = 0; round < 300; ++round) {
    FilterTable rows(3);
    for (FilterCategory& row : rows) {
      for (int i = 0; i < 8; ++i) row.extensions.push_back(u"." + anyText(7));
    }
    const ExtensionTable table = MakeExtensionTable(rows);
    for (int i = 0; i < 300; ++i) {
      const std::u16string name = anyText(5) + u"." + anyText(6);
      std::vector<uint32_t> expected;
      for (uint32_t row = 0; row < rows.size(); ++row) {
        if (IsOfCategory(rows[row], name)) expected.push_back(row);
      }
      const uint32_t id = ExtensionIdOf(table, name);
      ASSERT_EQ(id == table.None() ? std::vector<uint32_t>() : table.categoriesById[id], expected)
          << testing::PrintToString(name);
      found += expected.size();
    }
  }
  EXPECT_GT(found, 10'000u);
}

}  // namespace
}  // namespace quilmark
