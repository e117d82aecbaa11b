#include "shell/win32/list_paint.h"

#include "config/palette.h"
#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/clock.h"
#include "search/filtered_results.h"
#include "search/sort.h"
#include "shell/cell_text.h"
#include "shell/empty_state.h"
#include "shell/highlight.h"
#include "shell/list_colors.h"
#include "shell/result_messages.h"
#include "shell/row_cells.h"
#include "shell/row_text.h"
#include "shell/win32/canvas.h"
#include "shell/window_timers.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kRowInset = 8, kRowRadius = 8, kRowGap = 4;
constexpr int kHeaderInset = 12, kStatusBottom = 72, kStatusHeight = 17, kStatusLeft = 20,
              kEmptyLine = 30;
constexpr int kListIcon = 16, kIconShift = 22, kSmallIcon = 24, kLargeIcon = 48, kIconTop = 8,
              kIconGap = 4;

struct ColumnText {
  std::u16string_view key, english;
};
constexpr ColumnText kColumnTexts[] = {{u"", u"#"},
                                       {u"Header_Name", u"Name"},
                                       {u"Header_Size", u"Size"},
                                       {u"Header_Modified", u"Modified"},
                                       {u"Header_Created", u"Created"},
                                       {u"Header_Path", u"Path"}};

std::u16string HeaderText(int column) {
  const ColumnText& text = kColumnTexts[column];
  std::u16string header =
      text.key.empty() ? std::u16string(text.english) : TranslateOr(text.key, text.english);
  const std::scoped_lock lock(ResultsLock);
  if (column == SortColumn) header += SortAscending ? u" \u2191" : u" \u2193";
  return header;
}

struct ListPaint {
  Canvas canvas;
  ListLayout layout;
  std::u16string term;  // to mark in names
  ListColors colors;
  bool hasFocus = false;  // keys go to the list

  int Scaled(int n) const { return ScaleFor(layout.dpi, n); }
};

Rect CellOf(const ListPaint& paint, const Rect& row, int column) {
  const int left = ColumnLeft(paint.layout, App().scrollX, column);
  const int width = paint.layout.columns[static_cast<size_t>(column)];
  return {left, row.top, left + width, row.bottom};
}

const RowColors& ColorsOf(const ListPaint& paint, uint64_t index) {
  if (App().list.selection.rows.contains(index)) return paint.colors.selected;
  return static_cast<int64_t>(index) == App().list.hoverRow ? paint.colors.hovered : paint.colors.plain;
}

Rect GroundOf(const ListPaint& paint, const Rect& row) {
  return {row.left + paint.Scaled(kRowInset), row.top, row.right - paint.Scaled(kRowInset),
          row.top + paint.layout.pitch - paint.Scaled(kRowGap)};
}

void DrawRowGround(const ListPaint& paint, const Rect& row, Color color) {
  if (color == paint.colors.plain.ground) return;
  paint.canvas.FillRound(GroundOf(paint, row), paint.Scaled(kRowRadius), color);
}

// The row that F2 renames, which need not be a chosen one.
void DrawFocus(const ListPaint& paint, const Rect& row, uint64_t index) {
  if (!paint.hasFocus || static_cast<int64_t>(index) != App().list.selection.focusRow) return;
  paint.canvas.OutlineRound(GroundOf(paint, row), paint.Scaled(kRowRadius), CurrentPalette.focusRing);
}

std::u16string CellText(const RowText& text, const RowCells& cells, uint64_t index, int column) {
  switch (column) {
    case 0:
      return RowNumberText(index);
    case kColumnSize:
      return cells.size;
    case kColumnModified:
      return cells.modified;
    case kColumnCreated:
      return cells.created;
    default:
      return text.folder;
  }
}

void DrawGridLines(const ListPaint& paint, const Rect& row) {
  if (!CurrentWindowSettings.tableGridLines) return;
  for (int column = 0; column < kPathColumn; ++column) {
    const int right = CellOf(paint, row, column).right;
    if (right > paint.layout.rows.left && right < paint.layout.rows.right) {
      paint.canvas.Fill({right - 1, row.top, right, row.bottom}, CurrentPalette.border);
    }
  }
  paint.canvas.Fill({row.left + paint.Scaled(kRowInset), row.bottom - 1,
                     row.right - paint.Scaled(kRowInset), row.bottom},
                    CurrentPalette.border);
}

// A sheet with a folded corner, or a folder with a tab.
void DrawGlyph(const ListPaint& paint, Point middle, int size, bool isDirectory,
               const RowColors& colors) {
  const int half = size / 2, tab = size / 6;
  const Rect body = {middle.x - half * (isDirectory ? 4 : 3) / 4,
                     middle.y - half + (isDirectory ? tab : 0),
                     middle.x + half * (isDirectory ? 4 : 3) / 4, middle.y + half};
  if (isDirectory) {
    paint.canvas.FillRound({body.left, middle.y - half, middle.x, body.top + tab}, tab, colors.folder);
    return paint.canvas.FillRound(body, tab, colors.folder);
  }
  const int fold = size / 4;
  paint.canvas.FillCut(body, fold, colors.file);
  paint.canvas.FillCorner({body.right - fold, body.top, body.right, body.top + fold},
                          MixColor(colors.file, colors.ground, 50));
}

void DrawName(const ListPaint& paint, const Rect& place, const RowText& text, const RowColors& colors) {
  const int size = paint.Scaled(kListIcon);
  const int left = place.left - paint.Scaled(kCellTextInset - kCellClipInset);
  const ClipScope clip(paint.canvas.dc, {left, place.top, place.right, place.bottom});
  DrawGlyph(paint, {left + size / 2, (place.top + place.bottom) / 2}, size, text.isDirectory, colors);
  paint.canvas.MarkedLine({place.left + paint.Scaled(kIconShift), place.top, place.right, place.bottom},
                          text.name, HighlightRanges(text.name, paint.term), colors);
}

void DrawTableRow(const ListPaint& paint, const Rect& row, uint64_t index, const RowText& text,
                  const RowCells& cells) {
  const RowColors& colors = ColorsOf(paint, index);
  DrawRowGround(paint, row, colors.ground);
  if (text.name.empty()) return;  // a volume that went away
  for (int column = 0; column < kColumns; ++column) {
    const Rect cell = CellOf(paint, row, column);
    if (cell.right <= paint.layout.rows.left || cell.left >= paint.layout.rows.right) continue;
    const Rect place = TextPlaceOf(paint.layout, cell, column);
    if (column == 1) {
      DrawName(paint, place, text, colors);
    } else {
      paint.canvas.Line(place, CellText(text, cells, index, column), colors.muted);
    }
  }
  DrawGridLines(paint, row);
  DrawFocus(paint, row, index);
}

void DrawIconCell(const ListPaint& paint, const Rect& cell, uint64_t index, const RowText& text) {
  const RowColors& colors = ColorsOf(paint, index);
  DrawRowGround(paint, cell, colors.ground);
  if (text.name.empty()) return;
  const int size = paint.Scaled(paint.layout.view == ViewMode::kSmallIcons ? kSmallIcon : kLargeIcon);
  const int top = cell.top + paint.Scaled(kIconTop);
  DrawGlyph(paint, {(cell.left + cell.right) / 2, top + size / 2}, size, text.isDirectory, colors);
  const int inset = paint.Scaled(kCellClipInset);
  paint.canvas.MarkedLines({cell.left + inset, top + size + paint.Scaled(kIconGap), cell.right - inset,
                            cell.bottom - paint.Scaled(kRowGap)},
                           text.name, HighlightRanges(text.name, paint.term), colors);
  DrawFocus(paint, cell, index);
}

PaintOutcome DrawRows(const ListPaint& paint) {
  PaintOutcome outcome;
  const auto rows = ShownResults();
  const RowsInView inView = RowsToPaint(paint.layout, App().scrollY, rows->size());
  const ClipScope clip(paint.canvas.dc, paint.layout.rows);
  const SelectScope font(paint.canvas.dc, TheWindow().fonts.list.Get());
  for (uint64_t index = inView.first; index < inView.end; ++index) {
    const Rect place = PlaceOfRow(paint.layout, App().scrollY, index);
    const RowText text = TextOfRow((*rows)[index]);
    outcome.isLater = outcome.isLater || text.isLater;
    if (paint.layout.view == ViewMode::kList) {
      const RowCells cells = CellsOfRow((*rows)[index]);
      outcome.isMissing = outcome.isMissing || cells.isMissing;
      outcome.isLater = outcome.isLater || cells.isLater;
      DrawTableRow(paint, place, index, text, cells);
    } else {
      DrawIconCell(paint, place, index, text);
    }
  }
  return outcome;
}

void DrawHeader(const ListPaint& paint) {
  const Rect& header = paint.layout.header;
  if (header.top == header.bottom) return;
  paint.canvas.Fill(header, paint.colors.band);
  const ClipScope clip(paint.canvas.dc, header);
  const SelectScope font(paint.canvas.dc, TheWindow().fonts.header.Get());
  for (int column = 0; column < kColumns; ++column) {
    const Rect cell = CellOf(paint, header, column);
    paint.canvas.Line(
        {cell.left + paint.Scaled(kHeaderInset), cell.top, cell.right - paint.Scaled(2), cell.bottom},
        HeaderText(column), paint.colors.bandText);
    if (CurrentWindowSettings.tableGridLines && column < kPathColumn) {
      paint.canvas.Fill({cell.right - 1, cell.top, cell.right, cell.bottom}, CurrentPalette.border);
    }
  }
}

void DrawBar(const ListPaint& paint, const std::optional<Scrollbar>& bar, Bar kind) {
  if (!bar) return;
  paint.canvas.Fill(bar->track, CurrentPalette.surface);
  const bool isActive = App().list.hoverBar == kind || App().list.dragBar == kind;
  paint.canvas.FillRound(bar->thumb, paint.Scaled(kThumbRadius),
                         isActive ? paint.colors.heldThumb : paint.colors.thumb);
}

void DrawTop(const ListPaint& paint, const MainWindow& window) {
  paint.canvas.Fill({0, 0, App().clientWidth, App().headerTop}, CurrentPalette.toolbar);
  paint.canvas.Fill({0, App().headerTop - 1, App().clientWidth, App().headerTop}, CurrentPalette.border);
  const SelectScope font(paint.canvas.dc, window.fonts.main.Get());
  // Above the line below it, which stands higher beside a sidebar.
  const int bottom = std::min(paint.Scaled(kStatusBottom), App().headerTop - 1);
  paint.canvas.Line({paint.Scaled(kStatusLeft), bottom - paint.Scaled(kStatusHeight),
                     App().clientWidth - paint.Scaled(kStatusLeft), bottom},
                    window.StatusText(), paint.colors.status);
}

// The filter categories, where they stand at the side.
void DrawSidebar(const ListPaint& paint, const MainWindow& window) {
  if (!CurrentWindowSettings.sidebarLayout) return;
  const int width = App().sidebarWidth;
  paint.canvas.Fill({0, App().headerTop, width, App().clientHeight}, paint.colors.panel);
  const auto& captions = window.filterBar.Captions();
  const SidebarLayout sidebar = window.Sidebar();
  const SelectScope font(paint.canvas.dc, window.fonts.filter.Get());
  for (size_t i = 0; i < sidebar.rows.size(); ++i) {
    const int tag = sidebar.first + static_cast<int>(i);
    DrawTag(paint.canvas.dc, ToRECT(sidebar.rows[i]), captions[static_cast<size_t>(tag)],
            tag == ActiveCategory, tag == App().list.hoverTag);
  }
  if (sidebar.scrollLimit > 0) {
    paint.canvas.Fill(sidebar.track, paint.colors.panel);
    paint.canvas.FillRound(sidebar.thumb, paint.Scaled(kThumbRadius),
                           App().list.dragsSidebar ? paint.colors.heldThumb : paint.colors.thumb);
  }
  paint.canvas.Fill({width - 1, App().headerTop, width, App().clientHeight}, CurrentPalette.border);
}

Emptiness WhyEmpty(const AppState& app) {
  if (!HeldResults()->empty()) return Emptiness::kFiltered;
  return app.answeredText.empty() ? Emptiness::kNotAsked : Emptiness::kNotFound;
}

// What to do here, where there is nothing to see.
void DrawEmptyState(const ListPaint& paint, const MainWindow& window) {
  if (DisplayCount != 0 || !Engine().ready) return;
  const EmptyText text = EmptyListText(WhyEmpty(App()), CountIndexed(Engine()));
  const Rect& rows = paint.layout.rows;
  const int middle = (rows.top + rows.bottom) / 2, line = paint.Scaled(kEmptyLine);
  const ClipScope clip(paint.canvas.dc, rows);
  {
    const SelectScope font(paint.canvas.dc, window.fonts.title.Get());
    paint.canvas.Middle({rows.left, middle - line, rows.right, middle}, text.title,
                        paint.colors.plain.text);
  }
  const SelectScope font(paint.canvas.dc, window.fonts.list.Get());
  paint.canvas.Middle({rows.left, middle, rows.right, middle + line}, text.detail,
                      paint.colors.plain.muted);
}

}  // namespace

PaintOutcome PaintWindow(HDC dc, const MainWindow& window) {
  const ListPaint paint{.canvas = {dc},
                        .layout = window.List(),
                        .term = HighlightTerm(CurrentQueryText),
                        .colors = ListColorsOf(CurrentPalette),
                        .hasFocus = GetFocus() == window.Handle()};
  SetBkMode(dc, TRANSPARENT);
  paint.canvas.Fill({0, 0, App().clientWidth, App().clientHeight}, CurrentPalette.surface);
  const PaintOutcome outcome = DrawRows(paint);
  DrawEmptyState(paint, window);
  DrawHeader(paint);
  DrawBar(paint, VerticalBar(paint.layout, App().scrollY, DisplayCount), Bar::kVertical);
  DrawBar(paint, HorizontalBar(paint.layout, App().scrollX), Bar::kHorizontal);
  DrawSidebar(paint, window);
  DrawTop(paint, window);
  return outcome;
}

void MainWindow::Paint() {
  constexpr uint32_t kLaterMs = 100;
  PAINTSTRUCT paint;
  const HDC screen = BeginPaint(window_, &paint);
  ++paints;
  PaintOutcome outcome;
  if (backBuffer.IsReady()) {
    outcome = PaintWindow(backBuffer.Dc(), *this);
    paintedScrollY = App().scrollY;
    BitBlt(screen, 0, 0, App().clientWidth, App().clientHeight, backBuffer.Dc(), 0, 0, SRCCOPY);
  }
  EndPaint(window_, &paint);
  if (outcome.isLater) RequestListRepaint(App(), *this, kLaterMs, TickMs());
  // While the list moves nothing touches the disk; the settle timer comes back to it.
  if (outcome.isMissing && !IsScrolling(App(), TickMs())) {
    RunFeature(App().features.requestAttributes);
  }
}

}  // namespace quilmark
