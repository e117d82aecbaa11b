// From the text of the search box to a published set: one background job a search, volume after volume.
//
// A new search never waits for an old one, which notices by its ticket that it is stale. Order of
// hits: the volume list, then the index of the record.
#pragma once

#include <string>

#include "search/results/search_session.h"

namespace quilmark {

// At this many hits one partial set is published.
inline constexpr size_t kPartialResults = 3'000;
// Room that a set starts with.
inline constexpr size_t kResultRoom = 100'000;

// Starts a search for `text`; returns at once. Interface thread. `keepScroll`: the current query again,
// because the data changed under it. `recentView`: the recently opened files instead of a search.
void DoSearchAsync(std::u16string text, bool keepScroll, bool recentView);

// Rebuilds the set after volumes changed: the query in the search box again, or everything in scope if
// the box is empty. Interface thread.
void RefreshSearchResultsAfterIndexUpdate();

// The work of one search, on the calling thread.
void RunSearch(const SearchJob& job);

}  // namespace quilmark
