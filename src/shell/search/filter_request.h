// The filter bar's choices. Interface thread.
#pragma once

#include <string>
#include <vector>

#include "search/filters.h"
#include "shell/app/app_state.h"
#include "shell/view/window_port.h"

namespace quilmark {

// What the bar says now, from the settings and the chosen category.
FilterSettings CurrentFilterSettings();

// Applies the filters to the held results, from the top of the list.
void ApplyFilters(AppState& app, WindowPort& window);

// A tag was chosen.
void SelectFilterTag(AppState& app, WindowPort& window, int index);

// Names and counts of the tags, as their captions: "name\r\n(count)".
std::vector<std::u16string> TagCaptions(const std::vector<uint64_t>& counts);

// Entries of the preset boxes and of the unit box.
std::vector<std::u16string> SizePresetItems();
std::vector<std::u16string> TimePresetItems();
std::vector<std::u16string> SizeUnitItems();

}  // namespace quilmark
