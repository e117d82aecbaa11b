// The files that were opened last through the program, which an empty search box shows.
#pragma once

#include <memory>
#include <string_view>

#include "index/engine/search_engine.h"

namespace quilmark {

// Puts the item in front of the list and saves it. An item without a path is passed over. Interface
// thread.
void RecordRecentOpen(const MatchItem& item);

// Forgets all of them, in the file too. Interface thread.
void ClearRecentOpens();

// Searches anew for an empty search box, unless it goes on showing the whole index. Interface thread.
void RefreshRecentViewIfNeeded();

// Follows a file that has another name or place now. Interface thread.
void UpdateRecentAfterRename(std::u16string_view oldPath, std::u16string_view newPath);

}  // namespace quilmark
