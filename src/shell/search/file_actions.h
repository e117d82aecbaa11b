// What is done with the chosen rows. Interface thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "shell/search/search_view.h"

namespace quilmark {

// The actions, by the numbers that menus and keys map to.
enum class FileAction : uint8_t {
  kOpenFolder = 0,
  kOpen = 1,
  kDelete = 2,  // for good
  kCopyPath = 3,
  kCopy = 4,
  kCut = 5,
  kRunAsAdmin = 6,
  kProperties = 7,
  kRecycle = 8,
};

// Does it with the chosen rows; nothing where none is chosen, where the first has no path, and while
// another action runs. Rows without a path are passed over. May show windows of its own, and hand out
// messages, before it returns.
Effects RunFileAction(SearchView& view, const ViewContext& context, FileAction action);

// Has the list follow a deletion of these paths: repeats the search at the same place of the list, or
// takes the rows out of the results of a content query.
void RemovePathsFromResults(SearchView& view, const ViewContext& context,
                            const std::vector<std::u16string>& paths);

// Drags the chosen files until the mouse lets them go. isTaken is false where no drag came about.
Effects BeginFileDrag(SearchView& view, const ViewContext& context);

// Opens the system's own menu at the mouse for the first of the chosen files, and for those of them that
// lie in its folder.
Effects ShowSystemContextMenu(SearchView& view, const ViewContext& context);

}  // namespace quilmark
