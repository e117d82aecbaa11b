// What the mouse does in the search view: rows, columns, scrollbars, sidebar, tips. Interface thread.
#pragma once

#include <optional>

#include "shell/app/app_state.h"
#include "shell/view/effects.h"
#include "shell/view/view_context.h"
#include "shell/view/window_port.h"

namespace quilmark {

Effects OnSearchMouse(AppState& app, WindowPort& window, const ViewContext& context,
                      const MouseEvent& event);

// Rows have moved below a mouse that stands still, at `mouse` where it is over the window.
Effects RefreshHover(AppState& app, WindowPort& window, const ViewContext& context,
                     std::optional<Point> mouse);

// True where the edge of a column can be taken, or is held.
bool HasSizeCursor(const AppState& app, Point point);

}  // namespace quilmark
