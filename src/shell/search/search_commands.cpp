#include "shell/search/search_commands.h"

#include "config/window_settings.h"
#include "search/results/search_session.h"
#include "shell/actions/recent_opens.h"
#include "shell/search/context_menu.h"
#include "shell/search/file_actions.h"
#include "shell/search/filter_request.h"
#include "shell/search/rename.h"
#include "shell/search/search_places.h"
#include "shell/search/seen_rows.h"
#include "shell/search/sort_request.h"
#include "shell/search/view_mode.h"
#include "shell/view/commands.h"

namespace quilmark {

namespace {

struct ActionRow {
  uint16_t command;
  FileAction action;
};
constexpr ActionRow kActions[] = {
    {kCommandOpen, FileAction::kOpen},         {kCommandOpenFolder, FileAction::kOpenFolder},
    {kCommandDelete, FileAction::kDelete},     {kCommandRunAsAdmin, FileAction::kRunAsAdmin},
    {kCommandCopyPath, FileAction::kCopyPath}, {kCommandProperties, FileAction::kProperties},
    {kCommandCopy, FileAction::kCopy},         {kCommandCut, FileAction::kCut},
    {kCommandRecycle, FileAction::kRecycle},
};

bool IsBetween(uint16_t id, uint16_t first, uint16_t last) { return id >= first && id <= last; }

Effects ToggleSetting(const ViewContext& context, bool& setting) {
  setting = !setting;
  SaveWindowSettings(context.window.Placement());
  return {.dirty = context.client};
}

Effects ClearRecent() {
  ClearRecentOpens();
  RefreshRecentViewIfNeeded();
  return {};
}

Effects RunListCommand(SearchView& view, const ViewContext& context, uint16_t id) {
  switch (id) {
    case kCommandRename:
      return OpenRename(view, context);
    case kCommandSystemMenu:
      return ShowSystemContextMenu(view, context);
    case kCommandDrag:
      return BeginFileDrag(view, context);
    case kCommandClearRecent:
      return ClearRecent();
    case kCommandSidebar:
    case kCommandTopBar:
      return SetFilterLayout(view, context, id == kCommandSidebar);
    case kCommandGridLines:
      return ToggleSetting(context, CurrentWindowSettings.tableGridLines);
    case kCommandInitials: {
      const Effects effects = ToggleSetting(context, CurrentWindowSettings.initialSearchEnabled);
      TheSearch().options.initials = CurrentWindowSettings.initialSearchEnabled;
      return effects;
    }
    default:
      return {.isTaken = false};
  }
}

}  // namespace

Effects RunSearchCommand(SearchView& view, const ViewContext& context, uint16_t id) {
  for (const ActionRow& row : kActions) {
    if (row.command == id) return RunFileAction(view, context, row.action);
  }
  if (IsBetween(id, kCommandViewList, kCommandViewLargeIcons)) {
    return SetViewMode(view, context, static_cast<ViewMode>(id - kCommandViewList));
  }
  if (IsBetween(id, kCommandSortByName, kCommandSortByPath)) {
    return RequestSort(view, context, id - kCommandSortByName + 1, Direction::kByClick);
  }
  return RunListCommand(view, context, id);
}

Effects OpenContextMenu(SearchView& view, const ViewContext& context, Point at) {
  const ColumnsLayout layout = PlaceColumns(view, context);
  if (at.x < layout.rows.left || at.y < layout.rows.top) return {};
  const int64_t row = view.rows.RowAt(at);
  Effects effects;
  if (row >= 0) {
    BeginChoice(view);
    JoinSelection(view.list.selection, row);
    effects = {.focus = Focus::kWindow, .dirty = ListAreaOf(view, context)};
  }
  effects.tip = u"";
  effects.menu = Menu{ContextMenuRows({.hasRow = row >= 0,
                                       .view = ViewModeOfSettings(),
                                       .sidebarLayout = CurrentWindowSettings.sidebarLayout}),
                      at};
  return effects;
}

}  // namespace quilmark
