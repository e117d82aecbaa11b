#include "shell/search/sort_request.h"

#include "config/translate.h"
#include "shell/search/search_places.h"

namespace quilmark {

Effects RequestSort(SearchView& view, const ViewContext& context, int column, Direction direction) {
  if (view.prewarmRunning) {
    context.window.SetStatus(
        TranslateOr(u"Status_PrewarmSortingDisabled",
                    u"Cache prewarming in progress. Sorting is temporarily disabled."));
    return {};
  }
  view.engine.Sort(column, direction);
  return {.dirty = ListAreaOf(view, context)};
}

}  // namespace quilmark
