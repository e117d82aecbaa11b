// Sorts against the plainest statement of their order, over random rows.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "platform/text.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/folder_sizes.h"
#include "search/sort/sort.h"
#include "search/sort/sort_key.h"
#include "search/sort/sort_rows.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

std::vector<uint8_t> KeyOf(std::u16string_view text) {
  SortKeys keys;
  const auto key = keys.Add(text);
  return {key.begin(), key.end()};
}

TEST(SortKeys, StandInTheOrderOfTheirTexts) {
  std::vector<std::u16string> texts = {u"", u"a", u"a\u4e2d", u"ab", std::u16string(300, u'a')};
  for (const uint32_t unit :
       {0u, 1u, 0x7Du, 0x7Eu, 0x7Fu, 0x80u, 0xFFu, 0x407Eu, 0x407Fu, 0x4080u, 0xD800u, 0xFFFFu}) {
    const auto one = static_cast<char16_t>(unit);
    for (const size_t place : {0u, 1u, 3u, 7u, 8u, 9u}) {
      texts.push_back(std::u16string(place, u'a') + one);
      texts.push_back(std::u16string(place, u'a') + one + u"a");
      texts.push_back(std::u16string(place, u'a') + one + std::u16string(9, u'b'));
    }
  }
  std::vector<std::vector<uint8_t>> keys;
  for (const std::u16string& text : texts) keys.push_back(KeyOf(text));
  for (size_t a = 0; a < texts.size(); ++a) {
    for (size_t b = 0; b < texts.size(); ++b) {
      ASSERT_EQ(keys[a] < keys[b], texts[a] < texts[b])
          << testing::PrintToString(texts[a]) << testing::PrintToString(texts[b]);
    }
  }
}

TEST(SortKeys, StayInPlace) {
  SortKeys keys;
  const auto first = keys.Add(u"first");
  for (int i = 0; i < 100'000; ++i) keys.Add(u"one of many more");
  keys.Add(std::u16string(2'000'000, u'\u4e2d'));
  EXPECT_EQ(std::vector<uint8_t>(first.begin(), first.end()), KeyOf(u"first"));
}

bool IsRowBefore(const void*, uint32_t a, uint32_t b) { return a < b; }

TEST(SortEntries, AgreesWithAPlainSort) {
  std::mt19937 random(21);
  for (const size_t count : {0u, 1u, 2u, 24u, 25u, 3'000u, 20'000u, 60'000u}) {
    SortKeys keys;
    std::vector<std::u16string> texts(count);
    std::vector<KeyEntry> entries;
    for (std::u16string& text : texts) {
      // Long common beginnings, up to where whole keys are compared.
      text = std::u16string(random() % 3 * 7 + (random() % 50 == 0 ? 270 : 0), u'x') +
             RandomName(random, 3);
      entries.push_back(MakeKeyEntry(keys.Add(text), static_cast<uint32_t>(entries.size())));
    }
    std::shuffle(entries.begin(), entries.end(), random);
    for (const bool ascending : {true, false}) {
      std::vector<uint32_t> expected(count);
      for (uint32_t i = 0; i < count; ++i) expected[i] = i;
      std::stable_sort(expected.begin(), expected.end(), [&](uint32_t a, uint32_t b) {
        return ascending ? texts[a] < texts[b] : texts[b] < texts[a];
      });
      const KeyOrder order = {.ascending = ascending, .before = IsRowBefore};
      std::vector<KeyEntry> alone = entries, together = entries;
      SortEntries(alone, order);
      SortEntriesOnCores(together, order);
      for (size_t i = 0; i < count; ++i) {
        ASSERT_EQ(alone[i].row, expected[i]) << count << " " << i;
        ASSERT_EQ(together[i].row, expected[i]) << count << " " << i;
      }
    }
  }
}

// Rows of three volumes, two of one drive, in folders whose names differ by case or not at all.
class SortedRowsTest : public testing::Test {
 protected:
  SortedRowsTest() {
    for (const char16_t* const drive : {u"Q:", u"r:", u"Q:"}) volumes.push_back(MakeTestVolume(drive));
    for (const auto& volume : volumes) AddFolders(*volume);
  }
  void AddFolders(VolumeIndex& volume) {
    std::vector<uint64_t> parents = {kRootFrnOfTests, 999'999};  // the second one has no record
    for (uint64_t frn = 5'000; frn < 5'300; ++frn) {
      const uint64_t parent = parents[random() % parents.size()];
      const uint32_t index = AddFolder(volume, FolderName(), parent, frn);
      if (random() % 20 == 0) MarkDeleted(volume, index);
      parents.push_back(frn);
      rows.push_back({&volume, index});
    }
  }
  std::u16string FolderName() {
    constexpr const char16_t* kNames[] = {u"a", u"A", u"a b", u"a.b", u"ab", u"\u0416", u"\u0436"};
    return kNames[random() % std::size(kNames)];
  }
  void AddRow(VolumeIndex& volume, uint64_t parent) {
    const uint64_t frn = 100'000 + rows.size();
    rows.push_back({&volume, AddFile(volume, RandomName(random, 4), parent, frn)});
  }
  void AddFiles(int count) {
    for (int i = 0; i < count; ++i) {
      VolumeIndex& volume = *volumes[random() % volumes.size()];
      const uint64_t parent = random() % 8 == 0 ? kRootFrnOfTests : 5'000 + random() % 310;
      AddRow(volume, parent);
    }
    rows.push_back({volumes[0].get(), 1'000'000});
    std::shuffle(rows.begin(), rows.end(), random);
  }
  static std::u16string TextOf(const MatchItem& row, int column) {
    if (row.index >= row.volume->records.size()) return u"";
    if (column == kColumnOfPath) return FoldText(BuildPath(*row.volume, row.index));
    return FoldText(NameOf(row.volume->records[row.index]));
  }
  std::vector<MatchItem> PlainSort(int column, bool ascending) {
    struct Row {
      std::u16string text;
      MatchItem hit;
    };
    std::vector<Row> plain;
    for (const MatchItem& row : rows) plain.push_back({TextOf(row, column), row});
    std::sort(plain.begin(), plain.end(), [ascending](const Row& a, const Row& b) {
      if (a.text != b.text) return (a.text < b.text) == ascending;
      if (a.hit.volume != b.hit.volume) return std::less<>()(a.hit.volume, b.hit.volume);
      return a.hit.index < b.hit.index;
    });
    std::vector<MatchItem> sorted;
    for (const Row& row : plain) sorted.push_back(row.hit);
    return sorted;
  }
  // Few values, so that there are ties; none for some.
  void AddAttributes() {
    for (const MatchItem& row : rows) {
      if (row.index >= row.volume->records.size()) continue;
      const uint64_t frn = row.volume->records[row.index].frn;
      const AttrEntry entry = {.size = static_cast<int64_t>(random() % 5),
                               .modified = random() % 4,
                               .created = random() % 4,
                               .valid = random() % 10 != 0};
      if (random() % 4 != 0) StoreAttr(*row.volume, frn, entry);
      if (random() % 3 == 0) row.volume->mftSizes[frn].logical = random() % 5;
    }
    for (const auto& volume : volumes) RebuildFolderSizes(*volume);
  }
  struct PlainRow {
    bool isFolder = false;
    std::optional<int64_t> value;
    MatchItem hit;
  };
  static std::optional<int64_t> PlainSize(const VolumeIndex& volume, uint64_t frn) {
    const auto held = volume.attrs.find(frn);
    const bool isHeld = held != volume.attrs.end() && held->second.valid;
    const auto scanned = volume.mftSizes.find(frn);
    if (isHeld && (held->second.size != 0 || scanned == volume.mftSizes.end())) return held->second.size;
    if (scanned == volume.mftSizes.end()) return std::nullopt;
    return static_cast<int64_t>(scanned->second.logical);
  }
  static PlainRow PlainRowOf(const MatchItem& hit, int column) {
    if (hit.index >= hit.volume->records.size()) return {.hit = hit};
    const FileRecord& record = hit.volume->records[hit.index];
    PlainRow row = {.isFolder = record.isDirectory && !record.deleted, .hit = hit};
    if (record.deleted) return row;
    const auto entry = hit.volume->attrs.find(record.frn);
    const auto total = hit.volume->folderSizes.find(record.frn);
    if (row.isFolder) {
      if (total != hit.volume->folderSizes.end()) row.value = static_cast<int64_t>(total->second);
    } else if (column == kColumnSize) {
      row.value = PlainSize(*hit.volume, record.frn);
    } else if (entry != hit.volume->attrs.end() && entry->second.valid) {
      const FileTime date = column == kColumnModified ? entry->second.modified : entry->second.created;
      if (date != 0) row.value = static_cast<int64_t>(date);
    }
    return row;
  }
  std::vector<MatchItem> PlainValueSort(int column, bool ascending) {
    std::vector<PlainRow> plain;
    for (const MatchItem& hit : rows) plain.push_back(PlainRowOf(hit, column));
    std::sort(plain.begin(), plain.end(), [column, ascending](const PlainRow& a, const PlainRow& b) {
      const bool isByDate = column != kColumnSize;
      if (isByDate && a.isFolder != b.isFolder) return a.isFolder == ascending;
      if (a.value.has_value() != b.value.has_value()) return a.value.has_value();
      const bool hasOrder = a.value.has_value() && (!isByDate || !a.isFolder);  // folders show no date
      if (hasOrder && *a.value != *b.value) return (*a.value < *b.value) == ascending;
      if (a.hit.volume != b.hit.volume) return std::less<>()(a.hit.volume, b.hit.volume);
      return a.hit.index < b.hit.index;
    });
    std::vector<MatchItem> sorted;
    for (const PlainRow& row : plain) sorted.push_back(row.hit);
    return sorted;
  }
  void ExpectPlainOrder() {
    for (const int column : {kColumnName, kColumnOfPath}) {
      for (const bool ascending : {true, false}) {
        const auto sorted = SortedByText(rows, {column, ascending}, Ticket::Unlimited());
        ASSERT_EQ(*sorted, PlainSort(column, ascending)) << column << ascending;
      }
    }
  }
  bool IsTree() { return SortedByPathTree(rows, true, Ticket::Unlimited()).has_value(); }

  SearchHarness search;
  std::mt19937 random{17};
  std::vector<std::unique_ptr<VolumeIndex>> volumes;
  std::vector<MatchItem> rows;
};

TEST_F(SortedRowsTest, AreThoseOfAPlainSort) {
  AddFiles(30'000);
  ASSERT_TRUE(IsTree());
  ExpectPlainOrder();
}

TEST_F(SortedRowsTest, OfOneLargeFolderAreThoseOfAPlainSort) {
  for (int i = 0; i < 60'000; ++i) AddRow(*volumes[0], 5'007);
  AddFiles(100);
  ASSERT_TRUE(IsTree());
  ExpectPlainOrder();
}

TEST_F(SortedRowsTest, WithBackslashesInNamesAreThoseOfAPlainSort) {
  AddFolder(*volumes[0], u"a\\b", kRootFrnOfTests, 6'000);
  rows.push_back({volumes[0].get(), AddFile(*volumes[0], u"a", 6'000)});
  AddFiles(2'000);
  EXPECT_FALSE(IsTree());
  ExpectPlainOrder();
  rows.clear();
  rows.push_back({volumes[0].get(), AddFile(*volumes[0], u"a\\b\\c")});
  AddFiles(2'000);
  EXPECT_FALSE(IsTree());
  ExpectPlainOrder();
}

TEST_F(SortedRowsTest, InACircleAreThoseOfAPlainSort) {
  AddFolder(*volumes[1], u"a", 6'001, 6'000);
  AddFolder(*volumes[1], u"b", 6'000, 6'001);
  rows.push_back({volumes[1].get(), AddFile(*volumes[1], u"x", 6'001)});
  AddFiles(2'000);
  EXPECT_FALSE(IsTree());
  ExpectPlainOrder();
}

// A path has a hundred parents at most.
TEST_F(SortedRowsTest, DeepInATreeAreThoseOfAPlainSort) {
  for (const uint64_t depth : {99u, 100u, 101u, 150u}) {
    const uint64_t first = 10'000 * depth;
    uint64_t parent = kRootFrnOfTests;
    for (uint64_t frn = first; frn < first + depth; ++frn) {
      AddFolder(*volumes[2], FolderName(), parent, frn);
      parent = frn;
    }
    rows.clear();
    // The deepest one last: its folders are met one by one before.
    for (const uint64_t frn : {first + depth / 2, first + depth - 1}) {
      rows.push_back({volumes[2].get(), AddFile(*volumes[2], u"x", frn)});
    }
    EXPECT_EQ(IsTree(), depth <= 100) << depth;
    ExpectPlainOrder();
  }
}

TEST_F(SortedRowsTest, BySizeAndDateAreThoseOfAPlainSort) {
  AddFiles(30'000);
  AddAttributes();
  for (const int column : {kColumnSize, kColumnModified, kColumnCreated}) {
    for (const bool ascending : {true, false}) {
      const auto sorted = SortedByValue(rows, {column, ascending}, Ticket::Unlimited());
      ASSERT_EQ(*sorted, PlainValueSort(column, ascending)) << column << ascending;
    }
  }
}

TEST_F(SortedRowsTest, LeaveOutWhatIsGoneAndAskForWhatIsMissing) {
  AddFiles(3'000);
  AddAttributes();
  std::vector<MatchItem> live;
  for (const MatchItem& row : rows) {
    if (row.index < row.volume->records.size() && !row.volume->records[row.index].deleted)
      live.push_back(row);
  }
  ASSERT_LT(live.size(), rows.size());
  EXPECT_EQ(LiveRows(rows), live);
  for (const int column : {kColumnSize, kColumnModified, kColumnCreated}) {
    std::vector<MatchItem> expected;
    for (const MatchItem& row : live) {
      const FileRecord& record = row.volume->records[row.index];
      const auto entry = row.volume->attrs.find(record.frn);
      const bool isHeld = entry != row.volume->attrs.end() && entry->second.valid;
      const bool isKnown = column == kColumnSize
                               ? record.isDirectory || PlainSize(*row.volume, record.frn).has_value()
                               : isHeld && (column == kColumnModified ? entry->second.modified
                                                                      : entry->second.created) != 0;
      if (!isKnown) expected.push_back(row);
    }
    ASSERT_FALSE(expected.empty());
    EXPECT_EQ(MissingRows(rows, column, Ticket::Unlimited()), expected);
  }
  EXPECT_FALSE(MissingRows(rows, kColumnSize, StaleTicket()));
}

TEST_F(SortedRowsTest, AreNoneWhenStale) {
  AddFiles(1'000);
  for (const int column : {kColumnName, kColumnOfPath}) {
    EXPECT_FALSE(SortedByText(rows, {column, true}, StaleTicket()));
  }
}

}  // namespace
}  // namespace quilmark
