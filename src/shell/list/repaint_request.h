// The coalesced repaint of a list, by the timer 30014. Interface thread.
#pragma once

#include <cstdint>
#include <optional>

#include "shell/view/effects.h"
#include "shell/view/view_context.h"

namespace quilmark {

// What is to be painted again, and since when.
struct RepaintRequest {
  bool isPending = false;
  std::optional<Rect> only;  // empty: all of the list
  uint64_t askedMs = 0;      // when the oldest request was made that no repaint has followed
};

// Asks for a repaint of all of `area` when the timer fires, after `delayMs`. The requests of a burst end
// in one repaint; where they do not cease, there is one a frame.
Effects RequestRepaint(RepaintRequest& request, const ViewContext& context, const Rect& area,
                       uint32_t delayMs);

// The same for a `part` of the area. If all of it is asked for meanwhile, all of it is repainted.
Effects RequestRepaintOf(RepaintRequest& request, const ViewContext& context, const Rect& area,
                         const Rect& part, uint32_t delayMs);

// Takes the requests back, and returns what they asked for: the caller paints it. Empty where nothing
// was asked for.
[[nodiscard]] Rect TakeRepaint(RepaintRequest& request, const Rect& area);

}  // namespace quilmark
