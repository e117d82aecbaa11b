// Scrolling by what is neither a wheel nor a thumb: messages of scrollbars, which touchpads, screen
// readers and scripts send, and fingers. Interface thread.
#pragma once

#include <cstdint>

#include "shell/app/app_state.h"
#include "shell/search/list_layout.h"
#include "shell/view/native_control.h"
#include "shell/view/window_port.h"

namespace quilmark {

// Rows a line, and a page that keeps one line of the former. `position` is one of the scrollbar that
// stores the state of the list.
void ScrollRows(AppState& app, WindowPort& window, const ListLayout& layout, ScrollCommand command,
                int64_t position, uint64_t nowMs);
void ScrollColumns(AppState& app, WindowPort& window, const ListLayout& layout, ScrollCommand command,
                   int64_t position, uint64_t nowMs);

// Pixels that a step of such a scrollbar stands for: it counts in 32 bits.
int64_t PixelsOfBarStep(int64_t limit, int page);

// What such a scrollbar is told of the list.
BarRange RangeOfBar(int64_t limit, int page, int64_t position);

// A finger on the rows, which stay under it. A pan that begins sets where it stands.
void BeginPan(AppState& app, Point finger);
void PanTo(AppState& app, WindowPort& window, const ListLayout& layout, Point finger, uint64_t nowMs);

}  // namespace quilmark
