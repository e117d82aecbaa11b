// Background jobs around the attribute cache: rows in view, warming up, saving.
#pragma once

#include <cstdint>
#include <memory>

#include "search/results/search_session.h"

namespace quilmark {

// First: hydrationGeneration; second: kSomeAreStale, or 0 where a row in view has another entry.
inline constexpr uint32_t WM_ATTRS_UPDATED = 1030;
inline constexpr int64_t kSomeAreStale = 1;

// Posts WM_ATTRS_UPDATED: rows that are shown may have to be asked for anew.
void TellAttributesChanged();
// The same of files anywhere on a volume.
void TellSomeAreStale();

struct RowRange {
  uint64_t first = 0, end = 0;  // end: behind the last
};

// A row of the range shows what its file has had. True as well where a lock is not to be had at once.
bool ShowsStale(const ResultSet& rows, RowRange range);

// Job "attr_hydration": attributes of the rows, and totals of their folders, from the disk. Posts
// WM_ATTRS_UPDATED if something changed. Nothing for an empty range and while one runs.
void HydrateRowsAsync(std::shared_ptr<const ResultSet> rows, RowRange range);

// Job "prewarm_attr_cache": the first files of each volume that has no attributes yet.
// Engine().prewarming runs meanwhile.
void PrewarmAttrCacheAsync(SearchEngine& engine);

// Job "cache_autosave", if there is something to save and none runs. Of the program that owns the
// cache's file: another one that shares the configuration directory leaves it alone.
void AutosaveAttrCacheAsync(SearchEngine& engine);

// The same after a sort that ended at `nowMs` (TickMs), as job "sort_attr_cache_save": whatever there
// is, but not within 3 seconds of the one before.
void SaveAttrCacheAfterSort(uint64_t nowMs);

}  // namespace quilmark
