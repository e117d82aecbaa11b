#include "shell/search/sort_request.h"

#include "config/translate.h"

namespace quilmark {

void RequestSort(const AppState& app, WindowPort& window, int column, Direction direction) {
  if (app.prewarmRunning) {
    return window.SetStatus(
        TranslateOr(u"Status_PrewarmSortingDisabled",
                    u"Cache prewarming in progress. Sorting is temporarily disabled."));
  }
  DoSortAsync(column, direction);
  window.InvalidateList();
}

}  // namespace quilmark
