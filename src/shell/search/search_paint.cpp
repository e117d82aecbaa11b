#include "shell/search/search_paint.h"

#include <algorithm>
#include <optional>

#include "config/window_settings.h"
#include "search/filtered_results.h"
#include "search/search_state.h"
#include "shell/list/list_colors.h"
#include "shell/search/empty_state.h"
#include "shell/search/highlight.h"
#include "shell/search/result_rows.h"
#include "shell/search/search_places.h"
#include "shell/view/tag.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kStatusBottom = 72, kStatusHeight = 17, kStatusLeft = 20, kEmptyLine = 30;

void PaintThumb(Canvas& canvas, const ViewContext& context, const Rect& thumb, const ListColors& colors,
                bool isActive) {
  canvas.FillRound(thumb, context.Scaled(kThumbRadius), isActive ? colors.heldThumb : colors.thumb);
}

void PaintBar(Canvas& canvas, const RowsPicture& picture, const std::optional<Scrollbar>& bar,
              Bar kind) {
  if (!bar) return;
  canvas.Fill(bar->track, picture.context.palette.surface);
  const bool isActive = picture.list.hoverBar == kind || picture.list.dragBar == kind;
  PaintThumb(canvas, picture.context, bar->thumb, picture.colors, isActive);
}

void PaintTop(Canvas& canvas, const ViewContext& context, const AppState& app, Color letters) {
  const int right = context.client.right;
  canvas.Fill({0, 0, right, app.headerTop}, context.palette.toolbar);
  canvas.Fill({0, app.headerTop - 1, right, app.headerTop}, context.palette.border);
  // Above the line below it, which stands higher beside a sidebar.
  const int bottom = std::min(context.Scaled(kStatusBottom), app.headerTop - 1);
  const int height = std::max(context.Scaled(kStatusHeight), context.fonts.LineHeight(FontRole::kMain));
  const int margin = context.Scaled(kStatusLeft);
  canvas.Text({margin, bottom - height, right - margin, bottom}, app.statusText,
              {.font = FontRole::kMain, .color = letters});
}

// The filter categories, where they stand at the side.
void PaintSidebar(Canvas& canvas, const ViewContext& context, const AppState& app,
                  const ListColors& colors) {
  if (!CurrentWindowSettings.sidebarLayout) return;
  const int width = app.sidebarWidth, bottom = context.client.bottom;
  canvas.Fill({0, app.headerTop, width, bottom}, colors.panel);
  const SidebarLayout sidebar = PlaceSidebar(app);
  for (size_t i = 0; i < sidebar.rows.size(); ++i) {
    const int tag = sidebar.first + static_cast<int>(i);
    PaintTag(canvas, context, sidebar.rows[i], SplitCaption(app.tagCaptions[static_cast<size_t>(tag)]),
             {.isChosen = tag == ActiveCategory, .isHot = tag == app.list.hoverTag});
  }
  if (sidebar.scrollLimit > 0) {
    canvas.Fill(sidebar.track, colors.panel);
    PaintThumb(canvas, context, sidebar.thumb, colors, app.list.dragsSidebar);
  }
  canvas.Fill({width - 1, app.headerTop, width, bottom}, context.palette.border);
}

Emptiness WhyEmpty(const AppState& app) {
  if (!HeldResults()->empty()) return Emptiness::kFiltered;
  return app.answeredText.empty() ? Emptiness::kNotAsked : Emptiness::kNotFound;
}

// What to do here, where there is nothing to see.
void PaintEmptyState(Canvas& canvas, const RowsPicture& picture, const AppState& app) {
  if (DisplayCount != 0 || !Engine().ready) return;
  const EmptyText text = EmptyListText(WhyEmpty(app), CountIndexed(Engine()));
  const Rect& rows = picture.layout.rows;
  const int middle = (rows.top + rows.bottom) / 2, line = picture.context.Scaled(kEmptyLine);
  const CanvasClip clip(canvas, rows);
  canvas.Text({rows.left, middle - line, rows.right, middle}, text.title,
              {.font = FontRole::kTitle, .color = picture.colors.plain.text, .align = Align::kCentre});
  canvas.Text({rows.left, middle, rows.right, middle + line}, text.detail,
              {.color = picture.colors.plain.muted, .align = Align::kCentre});
}

}  // namespace

PaintOutcome PaintSearch(Canvas& canvas, const ViewContext& context, const AppState& app) {
  const ListLayout layout = PlaceList(app);
  const ListColors colors = ListColorsOf(context.palette);
  const std::u16string term = HighlightTerm(CurrentQueryText);
  const RowsPicture picture{.context = context,
                            .layout = layout,
                            .colors = colors,
                            .list = app.list,
                            .scrollY = app.scrollY,
                            .scrollX = app.scrollX,
                            .term = term};
  canvas.Fill(context.client, context.palette.surface);
  const PaintOutcome outcome = PaintRows(canvas, picture);
  PaintEmptyState(canvas, picture, app);
  PaintHeader(canvas, picture);
  PaintBar(canvas, picture, VerticalBar(layout, app.scrollY, DisplayCount), Bar::kVertical);
  PaintBar(canvas, picture, HorizontalBar(layout, app.scrollX), Bar::kHorizontal);
  PaintSidebar(canvas, context, app, colors);
  PaintTop(canvas, context, app, colors.status);
  return outcome;
}

void NotePaint(AppState& app, const Rect& place, const PaintOutcome& outcome, uint64_t nowMs) {
  const Rect rows = PlaceList(app).rows;
  const bool isWhole = Intersection(rows, place) == rows;
  if (isWhole) app.listPaintedMs = nowMs;
  app.paintedMissing = outcome.isMissing || (app.paintedMissing && !isWhole);
}

}  // namespace quilmark
