// How the list moves: to an offset, by the commands that programs and scripts send, under a finger.
// Interface thread.
#pragma once

#include <cstdint>

#include "shell/search/list_layout.h"
#include "shell/search/search_view.h"

namespace quilmark {

// The list moves still: a thumb is held, or the last step was under 350 ms ago.
bool IsScrolling(const SearchView& view, uint64_t nowMs);

// See RequestRepaint.
Effects RequestListRepaint(SearchView& view, const ViewContext& context, uint32_t delayMs);

// Moves the rows so that `y` is the offset of the first line in view, as far as the rows go. In a burst
// nothing but the offset changes between repaints.
Effects ScrollTo(SearchView& view, const ViewContext& context, int64_t y);

// Rows a line, and a page that keeps one line of the former.
Effects ScrollRows(SearchView& view, const ViewContext& context, ScrollCommand command,
                   int64_t position);
Effects ScrollColumns(SearchView& view, const ViewContext& context, ScrollCommand command,
                      int64_t position);

// Pixels that a step of a system's scrollbar stands for: it counts in 32 bits.
int64_t PixelsOfBarStep(int64_t limit, int page);

// What such a scrollbar is told of the list.
BarRange RangeOfBar(int64_t limit, int page, int64_t position);

// A finger on the rows, which stay under it. A pan that begins sets where it stands.
Effects PanRows(SearchView& view, const ViewContext& context, const PanEvent& event);

}  // namespace quilmark
