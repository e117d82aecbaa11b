// The filter bar's choices. Interface thread.
#pragma once

#include <string>
#include <vector>

#include "search/filter/filters.h"
#include "shell/search/search_view.h"

namespace quilmark {

// What the bar says now, from the settings and the chosen category.
FilterSettings CurrentFilterSettings();

// A filter narrows the results: by category, size or time.
bool IsFilterActive();

// Applies the filters to the held results, from the top of the list.
Effects ApplyFilters(SearchView& view, const ViewContext& context);

// A tag was chosen.
Effects SelectFilterTag(SearchView& view, const ViewContext& context, int index);

// Counts the held results by category and gives the tags their captions.
Effects RefreshFilterCounts(SearchView& view, const ViewContext& context);
void RefreshFilterCountsSoon(SearchView& view, const ViewContext& context, uint32_t delayMs);

// Names and counts of the tags, as their captions: "name\r\n(count)".
std::vector<std::u16string> TagCaptions(const std::vector<uint64_t>& counts);

// Entries of the preset boxes and of the unit box.
std::vector<std::u16string> SizePresetItems();
std::vector<std::u16string> TimePresetItems();
std::vector<std::u16string> SizeUnitItems();

}  // namespace quilmark
