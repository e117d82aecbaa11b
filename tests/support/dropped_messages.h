// Messages that a test does not look at.
#pragma once

#include "platform/window_post.h"
#include "search/results/search_session.h"

namespace quilmark {

// Takes all that is posted, with the texts that come with some of it.
inline void DropMessages(PostQueue& queue) {
  while (const auto message = queue.Take(0)) {
    if (message->message == WM_SEARCH_STATUS) (void)TakeText(*message);
  }
}

}  // namespace quilmark
