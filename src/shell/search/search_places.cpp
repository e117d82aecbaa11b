#include "shell/search/search_places.h"

#include <algorithm>

#include "config/window_settings.h"
#include "search/filtered_results.h"
#include "shell/search/row_text.h"
#include "shell/view/tag.h"

namespace quilmark {

ListLayout PlaceList(const AppState& app) {
  ListInput input{.view = static_cast<ViewMode>(CurrentWindowSettings.viewMode),
                  .clientWidth = app.clientWidth,
                  .clientHeight = app.clientHeight,
                  .sidebarWidth = CurrentWindowSettings.sidebarLayout ? app.sidebarWidth : 0,
                  .headerTop = app.headerTop,
                  .dpi = app.systemDpi,
                  .columns = CurrentWindowSettings.columnWidth};
  // The stored width of the path column is its least; what is shown fits the rows in view.
  input.columns[kPathColumn] = std::max(input.columns[kPathColumn], app.pathColumnWidth);
  return LayoutList(input);
}

SidebarLayout PlaceSidebar(const AppState& app) {
  return LayoutSidebar({.clientHeight = app.clientHeight,
                        .headerTop = app.headerTop,
                        .sidebarWidth = app.sidebarWidth,
                        .dpi = app.systemDpi,
                        .tags = static_cast<int>(app.tagCaptions.size()),
                        .scroll = app.sidebarScroll});
}

FilterBarLayout PlaceTagButtons(const AppState& app, const TextMeasure& fonts) {
  FilterBarInput input{.clientWidth = app.clientWidth,
                       .dpi = app.systemDpi,
                       .sidebar = CurrentWindowSettings.sidebarLayout,
                       .tagWidths = {}};
  for (const std::u16string& caption : app.tagCaptions) {
    const TagText text = SplitCaption(caption);
    input.tagWidths.push_back(FilterTagWidth(app.systemDpi, fonts.WidthOf(FontRole::kFilter, text.name),
                                             fonts.WidthOf(FontRole::kFilter, text.count)));
  }
  return LayoutFilterBar(input);
}

void FitColumns(AppState& app, const TextMeasure& fonts) {
  const ListLayout layout = PlaceList(app);
  if (layout.view != ViewMode::kList) return;
  const auto rows = ShownResults();
  const RowsInView inView = RowsToPaint(layout, app.scrollY, rows->size());
  int widest = 0;
  for (uint64_t row = inView.first; row < inView.end; ++row) {
    widest = std::max(widest, fonts.WidthOf(FontRole::kList, TextOfRow((*rows)[row]).folder));
  }
  app.pathColumnWidth = FitPathColumn(layout, widest, CurrentWindowSettings.columnWidth[kPathColumn]);
}

}  // namespace quilmark
