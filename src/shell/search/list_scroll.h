// How the list moves, by whatever moves it, and what follows. Interface thread.
#pragma once

#include <cstdint>

#include "shell/search/search_view.h"

namespace quilmark {

// The list moves still: a thumb is held, or the last step was under 350 ms ago.
bool IsScrolling(const SearchView& view, uint64_t nowMs);

// See RequestRepaint.
Effects RequestListRepaint(SearchView& view, const ViewContext& context, uint32_t delayMs);

// What follows when the list has answered `moved`: nothing where no offset has changed. In a burst
// nothing but the offset changes between repaints.
Effects FollowScroll(SearchView& view, const ViewContext& context, const Effects& moved);

// A wheel's turn in the list; `delta` 120 a notch, positive away from the user.
Effects ScrollByWheel(SearchView& view, const ViewContext& context, int delta);
Effects ScrollSideways(SearchView& view, const ViewContext& context, int delta);

// A command that a program or a script sends.
Effects ScrollByCommand(SearchView& view, const ViewContext& context, const ScrollEvent& event);

// The thumb that is held goes to the mouse.
Effects MoveThumb(SearchView& view, const ViewContext& context, Point cursor);

// A finger on the rows, which stay under it.
Effects PanRows(SearchView& view, const ViewContext& context, const PanEvent& event);

}  // namespace quilmark
