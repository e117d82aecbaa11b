// The name of a row that the user edits. Interface thread.
#pragma once

#include "shell/actions/rename_text.h"
#include "shell/search/search_view.h"

namespace quilmark {

// Opens the editor over the row that has the focus; one that is open gets the focus again. Does nothing
// in the icon views, for a row out of view and for a file that is gone.
Effects OpenRename(SearchView& view, const ViewContext& context);

// Puts an open editor over its row, which stands somewhere else now.
Effects MoveRename(const SearchView& view, const ViewContext& context);

// Ends the editing; the file keeps its name.
Effects CancelRename(SearchView& view, const ViewContext& context);

// Renames the file to what the editor holds, and tells the user where that fails. Other events come in
// while the message box stands.
Effects CommitRename(SearchView& view, const ViewContext& context, std::u16string text, CommitEnd end);

}  // namespace quilmark
