#include "shell/search/view_mode.h"

#include "config/window_settings.h"
#include "shell/search/filter_request.h"
#include "shell/search/rename.h"
#include "shell/view/window_ids.h"

namespace quilmark {

Effects SetViewMode(SearchView& view, const ViewContext& context, ViewMode mode) {
  constexpr uint32_t kSettleMs = 220;
  CurrentWindowSettings.viewMode = static_cast<int>(mode);
  view.rows.scrollY = 0;
  view.lastScrollTick = context.nowMs;
  SaveWindowSettings(context.window.Placement());
  context.window.StartTimer(kTimerScrollSettle, kSettleMs);
  Effects effects = CancelRename(view, context);
  effects.Join({.relayout = true, .dirty = context.client, .paintsNow = true});
  return effects;
}

Effects SetFilterLayout(SearchView& view, const ViewContext& context, bool sidebar) {
  CurrentWindowSettings.sidebarLayout = sidebar;
  SaveWindowSettings(context.window.Placement());
  view.sidebarScroll = 0;
  view.list.hoverTag = -1;
  Effects effects = CancelRename(view, context);
  effects.Join(RefreshFilterCounts(view, context));
  effects.Join({.relayout = true, .dirty = context.client});
  return effects;
}

}  // namespace quilmark
