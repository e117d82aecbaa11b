// What the results of background work do to the search view. Interface thread.
#pragma once

#include "shell/search/search_view.h"

namespace quilmark {

// Answers a message of background work: isTaken is false for one that is stale or not known.
Effects TakeResultMessage(SearchView& view, const ViewContext& context, const PostedMessage& message);

// Has the attributes of the rows in view read.
void RequestAttributes(const SearchView& view);

// The list has come to rest, or is asked again whether it has.
Effects SettleScroll(SearchView& view, const ViewContext& context);

// Fills the attribute cache; no column is sorted by until that is done, or half a minute has passed.
void StartPrewarm(SearchView& view, const ViewContext& context);
Effects PollPrewarm(SearchView& view, const ViewContext& context);

}  // namespace quilmark
