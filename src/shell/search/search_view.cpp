#include "shell/search/search_view.h"

#include <utility>

#include "config/window_settings.h"
#include "platform/mul_div.h"
#include "search/results/search_session.h"
#include "shell/search/filter_request.h"
#include "shell/search/list_scroll.h"
#include "shell/search/rename.h"
#include "shell/search/result_messages.h"
#include "shell/search/search_commands.h"
#include "shell/search/search_keys.h"
#include "shell/search/search_mouse.h"
#include "shell/search/search_paint.h"
#include "shell/search/search_places.h"
#include "shell/view/tag.h"
#include "shell/view/window_ids.h"

namespace quilmark {

Effects SearchView::LaidOut(const ViewContext& context) { return RelayoutList(*this, context); }

Effects SearchView::Leave(const ViewContext& context) {
  Effects effects = OnSearchMouse(*this, context, {.kind = Mouse::kLost});  // what was held
  (void)rows.Leave();  // another view is painted in its place
  list.hoverColumn = list.hoverTag = -1;
  effects.Join(CancelRename(*this, context));
  effects.tip = u"";
  return effects;
}

void SearchView::Rescale(uint32_t from, uint32_t to) {
  const auto former = static_cast<int>(from), wanted = static_cast<int>(to);
  sidebarWidth = MulDiv(sidebarWidth, wanted, former);
  pathColumnWidth = MulDiv(pathColumnWidth, wanted, former);
  rows.Rescale(from, to);
  savedScrollY = savedScrollY * wanted / former;
  headerTop = MulDiv(headerTop, wanted, former);
}

void SearchView::PaintControl(Canvas& canvas, const ControlPicture& control,
                              const ViewContext& context) const {
  const int index = control.id - kFirstTag;
  if (index < 0 || static_cast<size_t>(index) >= tagCaptions.size()) return;
  PaintTag(canvas, context, control.place, SplitCaption(tagCaptions[static_cast<size_t>(index)]),
           {.isChosen = index == TheSearch().ActiveCategory,
            .isHot = control.isHot,
            .hasFocus = control.hasFocus});
}

Effects SearchView::NotePaint(const Rect& place, const PaintOutcome& outcome,
                              const ViewContext& context) {
  return NoteListPaint(*this, context, place, outcome);
}

Effects SearchView::OnMouse(const MouseEvent& event, const ViewContext& context) {
  return OnSearchMouse(*this, context, event);
}

Effects SearchView::Rehover(std::optional<Point> mouse, const ViewContext& context) {
  return RefreshHover(*this, context, mouse);
}

Effects SearchView::OnPan(const PanEvent& event, const ViewContext& context) {
  Effects effects = PanRows(*this, context, event);
  effects.tip = u"";
  return effects;
}

bool SearchView::CanPan(Point at, const ViewContext&) const { return Holds(rows.Grid().rows, at); }

Effects SearchView::OnKey(const KeyEvent& event, const ViewContext&) { return TakeListKey(event); }

Effects SearchView::OnCommand(uint16_t id, const ViewContext& context) {
  return RunSearchCommand(*this, context, id);
}

Effects SearchView::OnScroll(const ScrollEvent& event, const ViewContext& context) {
  Effects effects = ScrollByCommand(*this, context, event);
  effects.tip = u"";
  return effects;
}

Effects SearchView::OnTimer(uint32_t id, const ViewContext& context) {
  switch (id) {
    case TIMER_SEARCH_DEBOUNCE:
      StartTypedSearch(*this);
      return {};
    case kTimerScrollSettle:
      return SettleScroll(*this, context);
    case kTimerPrewarm:
      StartPrewarm(*this, context);
      return {};
    case kTimerPrewarmPoll:
      return PollPrewarm(*this, context);
    case kTimerFilterCounts:
      if (!std::exchange(filterCountsPending, false)) return {};
      return RefreshFilterCounts(*this, context);
    case kTimerRepaint:
      return {.dirty = TakeRepaint(repaint, ListArea(context))};
    default:
      return {.isTaken = false};
  }
}

Effects SearchView::OnPosted(const PostedMessage& message, const ViewContext& context) {
  return TakeResultMessage(*this, context, message);
}

bool SearchView::HasSizeCursor(Point at, const ViewContext& context) const {
  return IsColumnEdge(*this, context, at);
}

std::vector<BarRange> SearchView::Bars(const ViewContext& context) const {
  const SidebarLayout sidebar = PlaceSidebar(*this, context);
  return {rows.RangeOf(Bar::kVertical, kVerticalBar), rows.RangeOf(Bar::kHorizontal, kHorizontalBar),
          RangeOfBar(kSidebarBar, {sidebar.fitting, sidebar.scrollLimit, sidebar.first})};
}

Rect SearchView::StatusPlace(const ViewContext& context) const {
  return {0, 0, context.client.right, headerTop};
}

Rect SearchView::ListArea(const ViewContext& context) const { return ListAreaOf(*this, context); }

}  // namespace quilmark
