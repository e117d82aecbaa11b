// Windows of the system as targets of posts.
#pragma once

#include "platform/window_post.h"

namespace quilmark {

// As PostIfAlive, for a target that is no PostQueue. False on a POSIX host, which has no windows.
[[nodiscard]] bool PostToWindow(PostTarget window, const PostedMessage& message);

}  // namespace quilmark
