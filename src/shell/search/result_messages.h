// What the results of background work do to the search view. Interface thread.
#pragma once

#include "shell/search/search_view.h"

namespace quilmark {

// Answers a message of background work. isTaken is false for results of an older search and for a
// message that is not known; other stale messages are taken and change nothing.
Effects TakeResultMessage(SearchView& view, const ViewContext& context, const PostedMessage& message);

// Has the attributes of the rows in view read, on a job.
void RequestAttributes(const SearchView& view);

// Has the thumbnails of the rows in view loaded, on a job, where the view shows large icons.
void RequestThumbnails(const SearchView& view, const ViewContext& context);

// The timer of a moving list: fits the columns and asks for attributes and thumbnails once it has
// come to rest, else starts the timer anew.
Effects SettleScroll(SearchView& view, const ViewContext& context);

// Has the attribute cache filled. Sorts are refused until that is done, or half a minute has passed.
void StartPrewarm(SearchView& view, const ViewContext& context);

// The timer of the filling: lets sorts through again once it is done.
Effects PollPrewarm(SearchView& view, const ViewContext& context);

}  // namespace quilmark
