#include "cli/narrow.h"

#include <algorithm>
#include <cstdio>
#include <shared_mutex>
#include <utility>
#include <vector>

#include "platform/cores.h"
#include "platform/utf.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/folder_sizes.h"
#include "search/sort/sort.h"

namespace quilmark {

namespace {

// Calls `work` with each number below `count` until the user interrupts, on several threads since it
// waits for the disk.
template <typename Work>
void ForEachIndex(size_t count, Work work) {
  constexpr size_t kRowsAPiece = 256;
  OnCores(count, kRowsAPiece, [&work](size_t, size_t first, size_t end) {
    for (size_t i = first; i < end && !ShutdownRequested; ++i) work(i);
  });
}

std::shared_ptr<const ResultSet> KeepPassing(const ResultSet& rows, const FilterContext& filter) {
  std::vector<uint8_t> passes(rows.size());
  ForEachIndex(rows.size(), [&](size_t i) { passes[i] = PassesFilter(filter, rows[i]); });
  auto kept = std::make_shared<ResultSet>();
  for (size_t i = 0; i < rows.size(); ++i) {
    if (passes[i]) kept->push_back(rows[i]);
  }
  return kept;
}

// The volumes that a folder among the rows lies on.
std::vector<VolumeIndex*> VolumesOfFolders(const ResultSet& rows) {
  std::vector<VolumeIndex*> volumes;
  for (const MatchItem& row : rows) {
    if (std::find(volumes.begin(), volumes.end(), row.volume) != volumes.end()) continue;
    const auto kind = KindOfLocked(*row.volume, row.index);
    if (kind && !kind->isDeleted && kind->isDirectory) volumes.push_back(row.volume);
  }
  return volumes;
}

void WarnOfFullCache(const VolumeIndex& volume) {
  const std::shared_lock lock(volume.attrLock);
  if (volume.attrs.size() < kMostAttrEntries) return;
  std::fprintf(stderr, "quilmark: %s has more files than sizes are kept for: totals are too small\n",
               ToUtf8(volume.drive).c_str());
}

// Reads the sizes of all files of the volume first, since a total covers only what is known.
void ReadTotals(VolumeIndex& volume) {
  uint32_t count = 0;
  {
    const std::shared_lock lock(volume.indexLock);
    count = volume.records.size();
  }
  ForEachIndex(count, [&volume](size_t i) {
    const auto index = static_cast<uint32_t>(i);
    const auto kind = KindOfLocked(volume, index);
    if (!kind || kind->isDeleted || kind->isDirectory) return;
    AttrEntry entry;
    EnsureFileAttributes(&volume, index, entry, Insist::kNo);
  });
  if (ShutdownRequested) return;
  if (volume.folderSizesDirty) RebuildFolderSizes(volume);
  WarnOfFullCache(volume);
}

// Null if the user interrupted.
std::shared_ptr<const ResultSet> InOrder(std::shared_ptr<const ResultSet> rows, SortOrder order) {
  auto sorted = SortRows(std::move(rows), {order.column, order.ascending}, Ticket::Unlimited());
  return sorted ? std::make_shared<const ResultSet>(std::move(sorted->rows)) : nullptr;
}

// A category of what both select. One of folders and one of files have nothing in common.
FilterCategory CommonCategory(const FilterCategory& one, const FilterCategory& other) {
  if (IsFolderCategory(one) != IsFolderCategory(other)) return {};
  if (IsFolderCategory(one)) return one;
  FilterCategory common;
  for (const std::u16string& extension : one.extensions) {
    if (std::find(other.extensions.begin(), other.extensions.end(), extension) != other.extensions.end())
      common.extensions.push_back(extension);
  }
  return common;
}

}  // namespace

FilterContext MakeHitFilter(const HitFilters& filters, const FilterTable& table, size_t category) {
  FilterCategory selected{.label = {}, .extensions = filters.extensions};
  if (category != 0)
    selected = filters.extensions.empty() ? table[category] : CommonCategory(table[category], selected);
  FilterContext filter;
  filter.categories = std::make_shared<FilterTable>(FilterTable{{}, std::move(selected)});
  filter.settings.category = category != 0 || !filters.extensions.empty() ? 1 : 0;
  if (filters.size) filter.settings.sizePreset = kCustomSize;
  filter.range = filters.size;
  if (!filters.modified) return filter;
  filter.settings.timePreset = kCustomTime;
  filter.from = filters.modified->from;
  filter.to = filters.modified->to;
  return filter;
}

std::shared_ptr<const ResultSet> NarrowResults(std::shared_ptr<const ResultSet> results,
                                               const Narrowing& narrowing) {
  if (!narrowing.filter.settings.IsOff()) results = KeepPassing(*results, narrowing.filter);
  if (narrowing.readsTotals) {
    for (VolumeIndex* const volume : VolumesOfFolders(*results)) ReadTotals(*volume);
  }
  if (narrowing.order && !ShutdownRequested) results = InOrder(std::move(results), *narrowing.order);
  return ShutdownRequested ? nullptr : results;
}

}  // namespace quilmark
