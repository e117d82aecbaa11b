// Which icon stands in a row, and how large. Interface thread.
#pragma once

#include <string>

#include "shell/list/icon_cache.h"
#include "shell/search/columns.h"
#include "shell/search/row_text.h"

namespace quilmark {

// Pixels of a side at 96 dpi.
int IconSizeOf(ViewMode view);

// Whether the name ends as those of pictures do, in letters of either case.
bool HasImageExtension(std::u16string_view name);

// How a row's icon is wanted.
struct RowIconWish {
  ViewMode view = ViewMode::kList;
  int size = 16;          // pixels
  bool isMoving = false;  // the list is: nothing is loaded, only what is kept is shown
};

// What a row shows.
struct RowIcon {
  IconRef icon;                   // null: none
  bool isPictureMissing = false;  // it can be asked for by a job
};

// The icon of a row that has a name. Folders share one, drives have their own; a picture shows its
// thumbnail among large icons, and the icon of its type before it has one. `path` is a buffer, so that
// a row whose icon is kept allocates nothing. The shell, where it is asked, may hand out messages before
// it answers; `row` is not looked at afterwards.
RowIcon IconOfRow(IconCache& icons, const RowText& row, const RowIconWish& wish, std::u16string& path);

}  // namespace quilmark
