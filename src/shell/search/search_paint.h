// The search view as it is painted: bar, sidebar, header, rows, scrollbars.
#pragma once

#include "shell/search/search_view.h"

namespace quilmark {

// Covers every pixel that the canvas shows. Reads state and changes none. Interface thread.
PaintOutcome PaintSearch(Canvas& canvas, const ViewContext& context, const SearchView& view);

// What the view knows of its latest paint, of `place`; what was missing there is asked for.
Effects NoteListPaint(SearchView& view, const ViewContext& context, const Rect& place,
                      const PaintOutcome& outcome);

}  // namespace quilmark
