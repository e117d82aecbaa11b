#include "shell/search/result_messages.h"

#include <algorithm>
#include <utility>

#include "config/translate.h"
#include "index/engine/search_engine.h"
#include "platform/format.h"
#include "search/filter/filters.h"
#include "search/results/search_session.h"
#include "shell/actions/recent_opens.h"
#include "shell/search/filter_request.h"
#include "shell/search/list_scroll.h"
#include "shell/search/rename.h"
#include "shell/search/row_icons.h"
#include "shell/search/search_places.h"
#include "shell/search/sort_request.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint32_t kFinalCountsMs = 60, kFilterCountsMs = 80;
constexpr uint32_t kResultsTrimMs = 1'800, kFilterTrimMs = 2'200;
constexpr uint32_t kStillScrollingMs = 80, kPrewarmPollMs = 500;
constexpr int kMostPrewarmRounds = 60;
constexpr size_t kLongestTitle = 127;  // units

void SetTitleFrom(const ViewContext& context, std::u16string_view key, std::u16string_view english,
                  int64_t count) {
  std::u16string title = FormatText(TranslateOr(key, english), count);
  if (title.size() > kLongestTitle) title.resize(kLongestTitle);
  context.window.SetTitle(title);
}

std::u16string CountText(uint64_t count) { return FormatText(u"%llu", count); }

std::u16string CategoryName() {
  const auto table = CurrentCategories();
  const auto row = static_cast<size_t>(std::max(TheSearch().ActiveCategory.load(), 0));
  return row < table->size() ? (*table)[row].label : std::u16string();
}

void ShowResultTitle(const ViewContext& context, ResultKind kind) {
  const auto shown = static_cast<int64_t>(DisplayCount());
  if (kind == ResultKind::kPartial) {
    return SetTitleFrom(context, u"Title_SearchPartialFmt", u"Quilmark - %lld+ results found...", shown);
  }
  SetTitleFrom(context, u"Title_SearchFinalFmt", u"Quilmark - %lld results found", shown);
}

std::u16string ResultStatus(ResultKind kind, uint64_t resultCount) {
  if (resultCount == 0) return {};
  if (kind == ResultKind::kPartial) {
    return TranslateOr(u"Status_SearchingShowingPrefix", u"Searching... showing ") +
           CountText(DisplayCount()) + TranslateOr(u"Status_SearchingShowingSuffix", u" results");
  }
  if (TheSearch().ActiveCategory != 0) {
    return TranslateOr(u"Status_FilterApplyingPrefix", u"Filter: ") + CategoryName() +
           TranslateOr(u"Status_FilterApplyingSuffix", u" | Applying filter...");
  }
  return TranslateOr(u"Status_FilterHitsPrefix", u"Filter: ") + CategoryName() +
         TranslateOr(u"Status_FilterHitsMid", u" | Hits: ") + CountText(DisplayCount());
}

Effects ShowPartialResults(SearchView& view, const ViewContext& context) {
  if (IsFilterActive()) view.engine.RefreshFilter(CurrentFilterSettings());
  Effects effects = RelayoutList(view, context);
  effects.Join(RequestListRepaint(view, context, 100));
  return effects;
}

Effects ShowWholeResults(SearchView& view, const ViewContext& context) {
  view.engine.RefreshFilter(CurrentFilterSettings());
  Effects effects = RelayoutList(view, context);
  effects.dirty = ListAreaOf(view, context);
  context.window.StartTimer(kTimerWorkTrim, kResultsTrimMs);
  return effects;
}

Effects OnSearchResults(SearchView& view, const ViewContext& context, const PostedMessage& message) {
  if (message.first != TheSearch().CurrentResults.Number()) return {.isTaken = false};
  const auto kind = static_cast<ResultKind>(message.second);
  Effects effects = CancelRename(view, context);
  if (kind != ResultKind::kPartial) view.shownGeneration = message.first;
  if (kind == ResultKind::kFinal) view.answeredText = TheSearch().CurrentQueryText;
  const bool keepScroll =
      kind == ResultKind::kPartial ? view.keepScrollOnce.load() : view.keepScrollOnce.exchange(false);
  ClearSelection(view.list.selection);
  const uint64_t count = HeldResults()->size();
  const bool keepsFiltered = kind == ResultKind::kSorted && IsFilterActive();
  FollowNewResults(keepsFiltered ? KeepFiltered::kIfThere : KeepFiltered::kNo, count);
  ShowResultTitle(context, kind);
  context.window.SetStatus(ResultStatus(kind, count));
  if (kind == ResultKind::kPartial) {
    effects.Join(ShowPartialResults(view, context));
    return effects;
  }
  if (kind == ResultKind::kFinal) {
    RefreshFilterCountsSoon(view, context, kFinalCountsMs);
    view.rows.scrollY = keepScroll ? std::max<int64_t>(view.savedScrollY, 0) : 0;
  }
  effects.Join(ShowWholeResults(view, context));
  return effects;
}

// Frees the text, also where it is stale.
Effects OnSearchStatus(SearchView&, const ViewContext& context, const PostedMessage& message) {
  const auto text = TakeText(message);
  if (text != nullptr && message.first == TheSearch().CurrentResults.Number())
    context.window.SetTitle(*text);
  return {};
}

Effects OnFilterResults(SearchView& view, const ViewContext& context, const PostedMessage&) {
  ClearSelection(view.list.selection);
  RefreshFilterCountsSoon(view, context, kFilterCountsMs);
  context.window.SetTitle(TranslateOr(u"App_FilterTitlePrefix", u"Quilmark - Filter: ") +
                          CategoryName() + TranslateOr(u"App_FilterTitleHitsSeparator", u" | Hits: ") +
                          CountText(DisplayCount()));
  context.window.SetStatus(u"");
  Effects effects = RelayoutList(view, context);
  effects.Join(RequestListRepaint(view, context, 60));
  context.window.StartTimer(kTimerWorkTrim, kFilterTrimMs);
  return effects;
}

Effects OnRecentLoaded(SearchView&, const ViewContext&, const PostedMessage&) {
  RefreshRecentViewIfNeeded();
  return {};
}

RowRange RowsInViewOf(const SearchView& view, const ResultSet& rows) {
  const RowSpan inView = view.rows.InView(rows.size());
  return {inView.first, inView.end};
}

Effects OnAttrsUpdated(SearchView& view, const ViewContext& context, const PostedMessage& message) {
  if (message.first != TheSearch().hydrationGeneration.Number()) return {};
  // On a busy volume files become stale all the time, and hardly ever one in view.
  const auto rows = ShownResults();
  const bool isElsewhere =
      message.second == kSomeAreStale && !view.engine.ShowsStale(*rows, RowsInViewOf(view, *rows));
  return isElsewhere ? Effects() : RequestListRepaint(view, context, 100);
}

Effects OnResort(SearchView& view, const ViewContext& context, const PostedMessage& message) {
  if (message.first < 1 || message.first > 5) return {.isTaken = false};
  TheSearch().CurrentResults.Change(
      [&message](SearchResults& held) { held.SortAscending = message.second == 1; });
  return RequestSort(view, context, static_cast<int>(message.first), Direction::kKeep);
}

struct MessageRow {
  uint32_t message;
  Effects (*handle)(SearchView&, const ViewContext&, const PostedMessage&);
};
constexpr MessageRow kMessageRows[] = {
    {WM_SEARCH_RESULTS, OnSearchResults}, {WM_SEARCH_STATUS, OnSearchStatus},
    {WM_FILTER_RESULTS, OnFilterResults}, {WM_RECENT_LOADED, OnRecentLoaded},
    {WM_ATTRS_UPDATED, OnAttrsUpdated},   {WM_RESORT_RESULTS, OnResort},
};

}  // namespace

Effects TakeResultMessage(SearchView& view, const ViewContext& context, const PostedMessage& message) {
  for (const MessageRow& row : kMessageRows) {
    if (row.message == message.message) return row.handle(view, context, message);
  }
  return {.isTaken = false};
}

void RequestAttributes(const SearchView& view) {
  const auto rows = ShownResults();
  view.engine.RequestAttributes(rows, RowsInViewOf(view, *rows));
}

void RequestThumbnails(const SearchView& view, const ViewContext& context) {
  const ViewMode mode = ViewModeOfSettings();
  if (mode != ViewMode::kLargeIcons) return;
  const auto rows = ShownResults();
  view.engine.RequestThumbnails(rows, RowsInViewOf(view, *rows), context.Scaled(IconSizeOf(mode)));
}

Effects SettleScroll(SearchView& view, const ViewContext& context) {
  if (IsScrolling(view, context.nowMs)) {
    context.window.StartTimer(kTimerScrollSettle, kStillScrollingMs);
    return {};
  }
  Effects effects = RelayoutList(view, context);  // the path column fits the rows that stand still now
  RequestAttributes(view);
  RequestThumbnails(view, context);
  effects.Join(RequestListRepaint(view, context, 80));
  return effects;
}

void StartPrewarm(SearchView& view, const ViewContext& context) {
  view.prewarmRunning = true;
  view.prewarmRounds = 0;
  view.engine.PrewarmAttributes();
  context.window.StartTimer(kTimerPrewarmPoll, kPrewarmPollMs);
}

Effects PollPrewarm(SearchView& view, const ViewContext& context) {
  if (Engine().prewarming.IsRunning() && ++view.prewarmRounds < kMostPrewarmRounds) return {};
  context.window.StopTimer(kTimerPrewarmPoll);
  view.prewarmRunning = false;
  view.prewarmRounds = 0;
  // It may have filled rows that were painted without their values.
  return view.paintedMissing ? RequestListRepaint(view, context, 80) : Effects();
}

}  // namespace quilmark
