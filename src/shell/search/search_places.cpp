#include "shell/search/search_places.h"

#include <algorithm>

#include "config/window_settings.h"
#include "search/results/search_session.h"
#include "shell/search/rename.h"
#include "shell/search/row_text.h"
#include "shell/view/tag.h"

namespace quilmark {

namespace {

// Fits the path column to the rows in view.
void FitColumns(SearchView& view, const ViewContext& context) {
  const ColumnsLayout layout = PlaceColumns(view, context);
  if (layout.view != ViewMode::kList) return;
  const auto rows = ShownResults();
  const RowSpan inView = view.rows.InView(rows->size());
  int widest = 0;
  for (uint64_t row = inView.first; row < inView.end; ++row) {
    widest = std::max(widest, context.fonts.WidthOf(FontRole::kList, TextOfRow((*rows)[row]).folder));
  }
  view.pathColumnWidth = FitPathColumn(layout, widest, CurrentWindowSettings.columnWidth[kPathColumn]);
}

}  // namespace

ViewMode ViewModeOfSettings() { return static_cast<ViewMode>(CurrentWindowSettings.viewMode); }

ListStyle ListStyleOf(ViewMode mode) {
  constexpr ListStyle kStyles[] = {
      {.pitch = 44}, {.pitch = 84, .cell = 110}, {.pitch = 112, .cell = 150}};
  return kStyles[static_cast<size_t>(mode)];
}

ColumnsLayout PlaceColumns(const SearchView& view, const ViewContext& context) {
  ColumnsInput input{.view = ViewModeOfSettings(),
                     .clientWidth = context.client.right,
                     .clientHeight = context.client.bottom,
                     .sidebarWidth = CurrentWindowSettings.sidebarLayout ? view.sidebarWidth : 0,
                     .headerTop = view.headerTop,
                     .dpi = context.dpi,
                     .columns = CurrentWindowSettings.columnWidth};
  // The stored width of the path column is its least; what is shown fits the rows in view.
  input.columns[kPathColumn] = std::max(input.columns[kPathColumn], view.pathColumnWidth);
  return LayoutColumns(input);
}

void PlaceList(SearchView& view, const ViewContext& context) {
  ListView& rows = view.rows;
  const ListStyle style = ListStyleOf(ViewModeOfSettings());
  if (style != rows.Style()) rows.SetStyle(style);
  const ColumnsLayout layout = PlaceColumns(view, context);
  const int scrollX = rows.scrollX;
  rows.Place(layout.rows, layout.columnsWidth, context);
  rows.scrollX = scrollX;
}

SidebarLayout PlaceSidebar(const SearchView& view, const ViewContext& context) {
  return LayoutSidebar({.clientHeight = context.client.bottom,
                        .headerTop = view.headerTop,
                        .sidebarWidth = view.sidebarWidth,
                        .dpi = context.dpi,
                        .tags = static_cast<int>(view.tagCaptions.size()),
                        .scroll = view.sidebarScroll});
}

FilterBarLayout PlaceTagButtons(const SearchView& view, const ViewContext& context) {
  FilterBarInput input{.clientWidth = context.client.right,
                       .dpi = context.dpi,
                       .sidebar = CurrentWindowSettings.sidebarLayout,
                       .tagWidths = {}};
  for (const std::u16string& caption : view.tagCaptions) {
    const TagText text = SplitCaption(caption);
    input.tagWidths.push_back(FilterTagWidth(context.dpi,
                                             context.fonts.WidthOf(FontRole::kFilter, text.name),
                                             context.fonts.WidthOf(FontRole::kFilter, text.count)));
  }
  return LayoutFilterBar(input);
}

Rect ListAreaOf(const SearchView& view, const ViewContext& context) {
  return {0, view.headerTop, context.client.right, context.client.bottom};
}

Effects RelayoutList(SearchView& view, const ViewContext& context) {
  PlaceList(view, context);
  FitColumns(view, context);
  PlaceList(view, context);                             // a bar came or went with the fit
  (void)view.rows.ScrollSidewaysTo(view.rows.scrollX);  // the bars follow below
  Effects effects = MoveRename(view, context);
  effects.syncsBars = true;
  effects.rehovers = true;
  return effects;
}

Effects RedrawTags(const SearchView& view, const ViewContext& context) {
  context.window.RedrawTags();
  if (!CurrentWindowSettings.sidebarLayout) return {};
  return {.dirty = {0, view.headerTop, view.sidebarWidth, context.client.bottom}};
}

}  // namespace quilmark
