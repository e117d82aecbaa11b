// The name of a row that the user edits. Interface thread.
#pragma once

#include "shell/actions/rename_text.h"
#include "shell/search/search_view.h"

namespace quilmark {

// Opens the editor over the row that has the focus, or takes an open one up again. Nothing in the icon
// views, for a row out of view and for a file that is gone.
Effects OpenRename(SearchView& view, const ViewContext& context);

// The editor follows its row, which stands somewhere else now.
Effects MoveRename(const SearchView& view, const ViewContext& context);

// Ends the editing and keeps the name.
Effects CancelRename(SearchView& view, const ViewContext& context);

// What the editor holds becomes the name. May ask the user, and other events come in meanwhile.
Effects CommitRename(SearchView& view, const ViewContext& context, std::u16string text, CommitEnd end);

}  // namespace quilmark
