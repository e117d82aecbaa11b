// What posted messages do to the window. Interface thread.
#pragma once

#include "platform/window_post.h"
#include "shell/app/app_state.h"
#include "shell/view/window_port.h"

namespace quilmark {

// Answers a message of background work. False for one that is stale or not known, and for one that the
// system's own handling should see too.
bool TakeResultMessage(AppState& app, WindowPort& window, const PostedMessage& message);

// Arms the coalesced repaint of the list: the requests of a burst end in one, and in one a frame where
// they do not cease.
void RequestListRepaint(AppState& app, WindowPort& window, uint32_t delayMs, uint64_t nowMs);

// The same, for a part of it. Whoever asks for all of it meanwhile gets all of it.
void RequestRepaintOf(AppState& app, WindowPort& window, const Rect& place, uint32_t delayMs,
                      uint64_t nowMs);

// What was asked for is drawn anew now. Nothing where nothing was.
void InvalidateRequested(AppState& app, WindowPort& window);

// Reads the search box again after the set of volumes changed; an empty box shows the recent opens.
void SearchAgain(WindowPort& window);

// A filter narrows the results: by category, size or time.
bool IsFilterActive();

}  // namespace quilmark
