// The search view as it is painted: bar, sidebar, header, rows, scrollbars.
#pragma once

#include "canvas/canvas.h"
#include "shell/app/app_state.h"
#include "shell/view/view_context.h"

namespace quilmark {

// Covers every pixel that the canvas shows. Reads state and changes none. Interface thread.
PaintOutcome PaintSearch(Canvas& canvas, const ViewContext& context, const AppState& app);

// What the window knows of its latest paint, of `place`.
void NotePaint(AppState& app, const Rect& place, const PaintOutcome& outcome, uint64_t nowMs);

}  // namespace quilmark
