// The search view as it is painted: bar, sidebar, header, rows, scrollbars.
#pragma once

#include "shell/search/search_view.h"

namespace quilmark {

// Paints all of the view but its controls: see View::Paint. Interface thread.
PaintOutcome PaintSearch(Canvas& canvas, const ViewContext& context, const SearchView& view);

// Notes that `place` has been painted with that outcome, and asks for what was missing there.
Effects NoteListPaint(SearchView& view, const ViewContext& context, const Rect& place,
                      const PaintOutcome& outcome);

}  // namespace quilmark
