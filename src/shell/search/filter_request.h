// The filter bar's choices. Interface thread.
#pragma once

#include <string>
#include <vector>

#include "search/filter/filters.h"
#include "shell/search/search_view.h"

namespace quilmark {

// The filter in force, from the settings and the chosen category.
FilterSettings CurrentFilterSettings();

// True if a category, a size or a time narrows the results.
bool IsFilterActive();

// Applies the filters to the held results, from the top of the list.
Effects ApplyFilters(SearchView& view, const ViewContext& context);

// Takes the category at `index` for chosen, and applies it; an index without a category chooses all.
Effects SelectFilterTag(SearchView& view, const ViewContext& context, int index);

// Counts the held results by category and gives the tags their captions.
Effects RefreshFilterCounts(SearchView& view, const ViewContext& context);

// The same after `delayMs`, once for all that ask in the meantime.
void RefreshFilterCountsSoon(SearchView& view, const ViewContext& context, uint32_t delayMs);

// The captions of all tags, "name\r\n(count)". `counts` are those of the categories, in their order.
std::vector<std::u16string> TagCaptions(const std::vector<uint64_t>& counts);

// Entries of the box of size presets, in the interface's language.
std::vector<std::u16string> SizePresetItems();

// Entries of the box of time presets, likewise.
std::vector<std::u16string> TimePresetItems();

// Entries of the box of units, likewise.
std::vector<std::u16string> SizeUnitItems();

}  // namespace quilmark
