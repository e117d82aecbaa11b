// What the engine tells the window of its volumes. Interface thread.
#pragma once

#include "shell/app/app_state.h"

namespace quilmark {

// Answers a message of the engine. isTaken is false where the system's own handling should follow.
Effects OnEngineMessage(AppState& app, const ViewContext& context, const PostedMessage& message);

// Has the drives looked for again in a while, unless that is to come already. For a search that finds no
// volume ready.
void RetrySyncLater(AppState& app, WindowPort& window);

}  // namespace quilmark
