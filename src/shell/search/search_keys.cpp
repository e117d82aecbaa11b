#include "shell/search/search_keys.h"

#include "config/translate.h"
#include "search/query.h"
#include "search/search_pipeline.h"

namespace quilmark {

bool TakeSearchKey(WindowPort& window, uint32_t key, std::u16string text) {
  TrimQuery(text);
  if (key == kKeyEnter) {
    window.StopTimer(TIMER_SEARCH_DEBOUNCE);
    if (text.empty()) {
      RefreshSearchResultsAfterIndexUpdate();
    } else {
      DoSearchAsync(std::move(text), false, false);
    }
    return true;
  }
  if (key == kKeyEscape && IsContentPrefix(text)) {
    window.StopTimer(TIMER_SEARCH_DEBOUNCE);
    ++searchGeneration;
    window.SetStatus(TranslateOr(u"Status_ContentSearchCanceled", u"Content search canceled."));
    return true;
  }
  return false;
}

}  // namespace quilmark
