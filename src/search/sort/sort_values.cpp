#include <array>
#include <functional>
#include <mutex>
#include <shared_mutex>

#include "search/attributes/attr_cache.h"
#include "search/attributes/folder_sizes.h"
#include "search/sort/sort_rows.h"

namespace quilmark {

namespace {

FileTime DateOf(const AttrEntry& entry, int column) {
  return column == kColumnModified ? entry.modified : entry.created;
}
FileTime DateOf(const SortRow& row, int column) {
  return column == kColumnModified ? row.modified : row.created;
}

// What the index says of the rows of a run; frn 0 for one that is gone.
struct RunKinds {
  std::array<uint64_t, kRowsARun> frns = {};
  std::array<bool, kRowsARun> isFolder = {}, isLive = {};
  std::array<uint64_t, kRowsARun> fileFrns = {};  // 0 for a folder
};

void ReadKinds(RowRun run, RunKinds& kinds) {
  const VolumeIndex& volume = *run[0].volume;
  const std::shared_lock lock(volume.indexLock);
  PrefetchRecords(volume, run);
  for (size_t i = 0; i < run.size(); ++i) {
    const bool isThere = run[i].index < volume.records.size();
    const FileRecord record = isThere ? volume.records[run[i].index] : FileRecord{.deleted = 1};
    kinds.isLive[i] = !record.deleted;
    kinds.isFolder[i] = !record.deleted && record.isDirectory;
    kinds.frns[i] = record.deleted ? 0 : record.frn;
    kinds.fileFrns[i] = kinds.isFolder[i] ? 0 : kinds.frns[i];
  }
}

// Of a file whose attributes are as `entry` says.
void SetFileValue(SortRow& row, const AttrEntry& entry, uint64_t frn, int column) {
  row.size = entry.size;
  row.modified = entry.modified;
  row.created = entry.created;
  row.hasValue = entry.valid;
  if (column != kColumnSize) {
    row.hasValue = entry.valid && DateOf(entry, column) != 0;
    return;
  }
  if (entry.valid && entry.size != 0) return;
  const auto size = LookupMftSize(*row.volume, frn);
  if (!size) return;
  if (!entry.valid || size->logical > 0) row.size = static_cast<int64_t>(size->logical);
  row.hasValue = true;
}

void SetFolderValue(SortRow& row, uint64_t frn) {
  const auto size = GetFolderSize(*row.volume, frn, IfDirty::kLeave);
  row.hasValue = size.has_value();
  row.size = static_cast<int64_t>(size.value_or(0));
}

void FillSortRows(RowRun run, int column, std::span<SortRow> rows) {
  RunKinds kinds;
  std::array<AttrEntry, kRowsARun> entries;
  ReadKinds(run, kinds);
  PeekAttrs(*run[0].volume, std::span(kinds.fileFrns).first(run.size()), entries, Stale::kAsItWas);
  for (size_t i = 0; i < run.size(); ++i) {
    rows[i] = {.volume = run[i].volume, .index = run[i].index, .isDirectory = kinds.isFolder[i]};
    if (kinds.isFolder[i]) {
      SetFolderValue(rows[i], kinds.frns[i]);
    } else {
      SetFileValue(rows[i], entries[i], kinds.frns[i], column);
    }
  }
}

std::vector<VolumeIndex*> VolumesOf(RowRun rows) {
  std::vector<VolumeIndex*> volumes;
  for (const MatchItem& row : rows) {
    if (!volumes.empty() && volumes.back() == row.volume) continue;
    if (std::find(volumes.begin(), volumes.end(), row.volume) == volumes.end())
      volumes.push_back(row.volume);
  }
  return volumes;
}

// Once before the rows are filled: while sizes arrive the totals go stale again with each of them.
void RefreshFolderTotals(RowRun rows) {
  for (VolumeIndex* const volume : VolumesOf(rows)) {
    // A walk that is under way has taken the mark off and not published yet.
    { const std::scoped_lock underWay(volume->folderSizesBuild); }
    if (volume->folderSizesDirty) RebuildFolderSizes(*volume);
  }
}

}  // namespace

ResultSet LiveRows(RowRun held) {
  ResultSet rows;
  rows.reserve(held.size());
  RunKinds kinds;
  ForEachRun(held, [&](RowRun run) {
    if (run[0].volume == nullptr) return true;
    ReadKinds(run, kinds);
    for (size_t i = 0; i < run.size(); ++i) {
      if (kinds.isLive[i]) rows.push_back(run[i]);
    }
    return true;
  });
  return rows;
}

std::optional<ResultSet> MissingRows(RowRun rows, int column, const Ticket& ticket) {
  ResultSet missing;
  missing.reserve(rows.size() / 8 + 1024);
  RunKinds kinds;
  std::array<AttrEntry, kRowsARun> entries;
  const bool isDone = ForEachRun(rows, [&](RowRun run) {
    if (!ticket.IsCurrent()) return false;
    const VolumeIndex& volume = *run[0].volume;
    ReadKinds(run, kinds);
    const auto& asked = column == kColumnSize ? kinds.fileFrns : kinds.frns;
    LookupAttrs(volume, std::span(asked).first(run.size()), entries);
    for (size_t i = 0; i < run.size(); ++i) {
      const bool isKnown = column != kColumnSize ? DateOf(entries[i], column) != 0
                                                 : entries[i].valid || asked[i] == 0 ||
                                                       LookupMftSize(volume, asked[i]).has_value();
      if (kinds.isLive[i] && !isKnown) missing.push_back(run[i]);
    }
    return true;
  });
  if (!isDone) return std::nullopt;
  return missing;
}

std::optional<ResultSet> SortedByValue(RowRun rows, SetOrder order, const Ticket& ticket) {
  constexpr size_t kRowsAPiece = 16 * kRowsARun;
  RefreshFolderTotals(rows);
  std::vector<SortRow> sortRows(rows.size());
  OnCores(rows.size(), kRowsAPiece, [&](size_t, size_t first, size_t end) {
    auto place = std::span(sortRows).subspan(first);
    ForEachRun(rows.subspan(first, end - first), [&](RowRun run) {
      if (!ticket.IsCurrent()) return false;
      FillSortRows(run, order.column, place);
      place = place.subspan(run.size());
      return true;
    });
  });
  if (!ticket.IsCurrent()) return std::nullopt;
  SortOnCores(sortRows.begin(), sortRows.end(),
              [order](const SortRow& a, const SortRow& b) { return StandsBefore(a, b, order); });
  ResultSet sorted;
  sorted.reserve(sortRows.size());
  for (const SortRow& row : sortRows) sorted.push_back({row.volume, row.index});
  return sorted;
}

bool StandsBefore(const SortRow& a, const SortRow& b, SetOrder order) {
  const auto [column, ascending] = order;
  const bool isByDate = column != kColumnSize;
  if (isByDate && a.isDirectory != b.isDirectory) return a.isDirectory == ascending;
  if (a.hasValue != b.hasValue) return a.hasValue;
  if (!isByDate) {
    const bool isEmptyA = a.size <= 0, isEmptyB = b.size <= 0;
    if (isEmptyA != isEmptyB) return isEmptyA == ascending;
    if (a.size != b.size) return (a.size < b.size) == ascending;
  } else if (DateOf(a, column) != DateOf(b, column)) {
    return (DateOf(a, column) < DateOf(b, column)) == ascending;
  }
  if (a.volume != b.volume) return std::less<>()(a.volume, b.volume);
  return a.index < b.index;
}

}  // namespace quilmark
