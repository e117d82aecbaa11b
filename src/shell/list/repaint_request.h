// The coalesced repaint of a list, by the timer 30014. Interface thread.
#pragma once

#include <cstdint>
#include <optional>

#include "shell/view/effects.h"
#include "shell/view/view_context.h"

namespace quilmark {

struct RepaintRequest {
  bool isPending = false;
  std::optional<Rect> only;  // empty: all of the list
  uint64_t askedMs = 0;      // when the oldest request was made that no repaint has followed
};

// Arms the timer: the requests of a burst end in one repaint of `area`, and in one a frame where they do
// not cease.
Effects RequestRepaint(RepaintRequest& request, const ViewContext& context, const Rect& area,
                       uint32_t delayMs);

// The same, for a `part` of it. Whoever asks for all of it meanwhile gets all of it.
Effects RequestRepaintOf(RepaintRequest& request, const ViewContext& context, const Rect& area,
                         const Rect& part, uint32_t delayMs);

// What was asked for is drawn anew now; nothing where nothing was.
Rect TakeRepaint(RepaintRequest& request, const Rect& area);

}  // namespace quilmark
