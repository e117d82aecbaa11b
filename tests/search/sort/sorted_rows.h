// Random rows, and the plainest statement of each of their orders.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "platform/text.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/folder_sizes.h"
#include "search/sort/sort_rows.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {

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

}  // namespace quilmark
