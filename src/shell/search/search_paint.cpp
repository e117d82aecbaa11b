#include "shell/search/search_paint.h"

#include <algorithm>

#include "config/window_settings.h"
#include "search/results/search_session.h"
#include "shell/list/list_colors.h"
#include "shell/search/empty_state.h"
#include "shell/search/list_scroll.h"
#include "shell/search/result_messages.h"
#include "shell/search/search_places.h"
#include "shell/view/tag.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kStatusBottom = 72, kStatusHeight = 17, kStatusLeft = 20, kEmptyLine = 30;

void PaintTop(Canvas& canvas, const ViewContext& context, const SearchView& view, Color letters) {
  const int right = context.client.right;
  canvas.Fill({0, 0, right, view.headerTop}, context.palette.toolbar);
  canvas.Fill({0, view.headerTop - 1, right, view.headerTop}, context.palette.border);
  // It ends above the line below it, which stands higher beside a sidebar.
  const int bottom = std::min(context.Scaled(kStatusBottom), view.headerTop - 1);
  const int height = std::max(context.Scaled(kStatusHeight), context.fonts.LineHeight(FontRole::kMain));
  const int margin = context.Scaled(kStatusLeft);
  canvas.Text({margin, bottom - height, right - margin, bottom}, context.status,
              {.font = FontRole::kMain, .color = letters});
}

// Paints the tags of the sidebar.
void PaintSidebar(Canvas& canvas, const ViewContext& context, const SearchView& view,
                  const ListColors& colors) {
  if (!CurrentWindowSettings.sidebarLayout) return;
  const int width = view.sidebarWidth, bottom = context.client.bottom;
  canvas.Fill({0, view.headerTop, width, bottom}, colors.panel);
  const SidebarLayout sidebar = PlaceSidebar(view, context);
  for (size_t i = 0; i < sidebar.rows.size(); ++i) {
    const int tag = sidebar.first + static_cast<int>(i);
    PaintTag(canvas, context, sidebar.rows[i], SplitCaption(view.tagCaptions[static_cast<size_t>(tag)]),
             {.isChosen = tag == TheSearch().ActiveCategory, .isHot = tag == view.list.hoverTag});
  }
  if (sidebar.scrollLimit > 0) {
    canvas.Fill(sidebar.track, colors.panel);
    const BarColors bar = BarColorsOn(context.palette, context.palette.surface);
    canvas.FillRound(sidebar.thumb, context.Scaled(kThumbRadius),
                     view.list.dragsSidebar ? bar.heldThumb : bar.thumb);
  }
  canvas.Fill({width - 1, view.headerTop, width, bottom}, context.palette.border);
}

Emptiness WhyEmpty(const SearchView& view) {
  if (!HeldResults()->empty()) return Emptiness::kFiltered;
  return view.answeredText.empty() ? Emptiness::kNotAsked : Emptiness::kNotFound;
}

// Paints the text that a list without rows shows.
void PaintEmptyState(Canvas& canvas, const ViewContext& context, const SearchView& view,
                     const RowColors& colors) {
  if (DisplayCount() != 0 || !Engine().ready) return;
  const EmptyText text = EmptyListText(WhyEmpty(view), CountIndexed(Engine()));
  const Rect rows = view.rows.Grid().rows;
  const int middle = (rows.top + rows.bottom) / 2, line = context.Scaled(kEmptyLine);
  const CanvasClip clip(canvas, rows);
  canvas.Text({rows.left, middle - line, rows.right, middle}, text.title,
              {.font = FontRole::kTitle, .color = colors.text, .align = Align::kCentre});
  canvas.Text({rows.left, middle, rows.right, middle + line}, text.detail,
              {.color = colors.muted, .align = Align::kCentre});
}

// Has the settle timer ask. Of a job that runs the end is waited for: the timer would only come again
// and again.
void AskForPictures(const SearchView& view, const ViewContext& context) {
  constexpr uint32_t kAskMs = 70;
  if (view.engine.IsLoadingThumbnails()) return RequestThumbnails(view, context);
  context.window.StartTimer(kTimerScrollSettle, kAskMs);
}

}  // namespace

PaintOutcome PaintSearch(Canvas& canvas, const ViewContext& context, const SearchView& view) {
  const ListColors colors = ListColorsOf(context.palette);
  const Color ground = context.palette.surface;
  canvas.Fill(context.client, ground);
  const PaintOutcome outcome = view.rows.Paint(canvas, context, BarColorsOn(context.palette, ground));
  PaintEmptyState(canvas, context, view, colors.plain);
  PaintHeader(canvas, context, view, colors);
  PaintSidebar(canvas, context, view, colors);
  PaintTop(canvas, context, view, colors.status);
  return outcome;
}

PaintOutcome SearchView::Paint(Canvas& canvas, const ViewContext& context) const {
  return PaintSearch(canvas, context, *this);
}

Effects NoteListPaint(SearchView& view, const ViewContext& context, const Rect& place,
                      const PaintOutcome& outcome) {
  constexpr uint32_t kLaterMs = 100;
  const Rect rows = view.rows.Grid().rows;
  const bool isWhole = Intersection(rows, place) == rows;
  view.paintedScrollY = view.rows.scrollY;
  if (isWhole) view.listPaintedMs = context.nowMs;
  view.paintedMissing = outcome.isMissing || (view.paintedMissing && !isWhole);
  // While the list moves nothing is read from the disk; the settle timer asks for it.
  const bool isAtRest = !IsScrolling(view, context.nowMs);
  if (outcome.isMissing && isAtRest) RequestAttributes(view);
  if (outcome.isPictureMissing && isAtRest) AskForPictures(view, context);
  return outcome.isLater ? RequestListRepaint(view, context, kLaterMs) : Effects();
}

}  // namespace quilmark
