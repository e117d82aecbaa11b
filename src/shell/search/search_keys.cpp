#include "shell/search/search_keys.h"

#include <utility>

#include "config/translate.h"
#include "search/query/query.h"
#include "search/results/search_pipeline.h"
#include "shell/search/picked_query.h"
#include "shell/view/commands.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

struct KeyRow {
  uint32_t key;
  bool needsCtrl;
  uint16_t command;
};
constexpr KeyRow kListKeys[] = {
    {kKeyEnter, false, kCommandOpen}, {kKeyDelete, false, kCommandRecycle},
    {kKeyF2, false, kCommandRename},  {u'C', true, kCommandCopy},
    {u'X', true, kCommandCut},        {u'D', true, kCommandDelete},
};

}  // namespace

void StartTypedSearch(const SearchView& view) {
  DoSearchAsync(TheSearch().CurrentQueryText, false, false);
  // The search asks itself again until a volume is ready, but does not look for drives.
  if (!TheSearch().CurrentQueryText.empty() && !Engine().ready) view.engine.LookForVolumesLater();
}

void SearchAgain(const ViewContext& context) {
  const std::u16string text = context.window.TextOf(kQueryBox);
  const bool isEmpty = text.empty();
  DoSearchAsync(text, false, isEmpty);
}

Effects TakeSearchKey(const ViewContext& context, uint32_t key, std::u16string text) {
  TrimQuery(text);
  if (key == kKeyEnter) context.window.StopTimer(TIMER_SEARCH_DEBOUNCE);
  if ((key == kKeyEnter || key == kKeyF4) && LacksWords(text)) return {.command = kCommandFileTypes};
  if (key == kKeyEnter) {
    if (text.empty()) {
      RefreshSearchResultsAfterIndexUpdate();
    } else {
      DoSearchAsync(std::move(text), false, false);
    }
    return {};
  }
  if (key != kKeyEscape || !IsContentPrefix(text)) return {.isTaken = false};
  context.window.StopTimer(TIMER_SEARCH_DEBOUNCE);
  SupersedeSearch();
  context.window.SetStatus(TranslateOr(u"Status_ContentSearchCanceled", u"Content search canceled."));
  return {};
}

Effects TakeListKey(const KeyEvent& event) {
  if (event.key == kKeyTab) return {.focus = Focus::kSearchBox};
  for (const KeyRow& row : kListKeys) {
    if (row.key != event.key || (row.needsCtrl && !event.ctrl)) continue;
    return {.command = event.isRepeat ? uint16_t{0} : row.command};
  }
  return {.isTaken = false};
}

}  // namespace quilmark
