// What is done with the chosen rows. Interface thread.
#pragma once

#include <cstdint>

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

// Does it with the chosen rows; nothing where none is chosen. May show windows of its own before it
// returns.
Effects RunFileAction(SearchView& view, const ViewContext& context, FileAction action);

// Drags the chosen files until the mouse lets them go.
Effects BeginFileDrag(SearchView& view, const ViewContext& context);

// Opens the system's own menu for the chosen files at the mouse.
Effects ShowSystemContextMenu(SearchView& view, const ViewContext& context);

}  // namespace quilmark
