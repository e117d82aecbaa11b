// How the list moves, by whatever moves it, and what follows. Interface thread.
#pragma once

#include <cstdint>

#include "shell/search/search_view.h"

namespace quilmark {

// True while the list moves: a thumb is held, or the last step was under 350 ms ago.
bool IsScrolling(const SearchView& view, uint64_t nowMs);

// Asks for a repaint of the whole list after `delayMs`, as RequestRepaint does.
Effects RequestListRepaint(SearchView& view, const ViewContext& context, uint32_t delayMs);

// What follows for the view when its list has answered `moved`: nothing where no offset has changed.
// While steps come in a burst, only the offset changes between repaints.
Effects FollowScroll(SearchView& view, const ViewContext& context, const Effects& moved);

// Moves the list by a turn of the wheel; `delta` is 120 a notch, positive away from the user.
Effects ScrollByWheel(SearchView& view, const ViewContext& context, int delta);

// Moves it by a tilt of the wheel; `delta` is 120 a notch, positive to the right.
Effects ScrollSideways(SearchView& view, const ViewContext& context, int delta);

// Moves it by a command that a program or a script sends.
Effects ScrollByCommand(SearchView& view, const ViewContext& context, const ScrollEvent& event);

// Moves the thumb that is held to the mouse.
Effects MoveThumb(SearchView& view, const ViewContext& context, Point cursor);

// Moves the rows with a finger, so that they stay under it.
Effects PanRows(SearchView& view, const ViewContext& context, const PanEvent& event);

}  // namespace quilmark
