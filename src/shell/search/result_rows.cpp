#include "shell/search/result_rows.h"

#include <algorithm>
#include <string>

#include "config/translate.h"
#include "config/window_settings.h"
#include "search/filtered_results.h"
#include "search/sort.h"
#include "shell/list/cell_text.h"
#include "shell/search/highlight.h"
#include "shell/search/row_cells.h"
#include "shell/search/row_text.h"
#include "shell/view/text_lines.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kRowInset = 8, kRowRadius = 8, kRowGap = 4, kHeaderInset = 12;
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

Rect CellOf(const RowsPicture& picture, const Rect& row, int column) {
  const int left = ColumnLeft(picture.layout, picture.scrollX, column);
  const int width = picture.layout.columns[static_cast<size_t>(column)];
  return {left, row.top, left + width, row.bottom};
}

const RowColors& ColorsOf(const RowsPicture& picture, uint64_t index) {
  if (picture.list.selection.rows.contains(index)) return picture.colors.selected;
  return static_cast<int64_t>(index) == picture.list.hoverRow ? picture.colors.hovered
                                                              : picture.colors.plain;
}

Rect GroundOf(const RowsPicture& picture, const Rect& row) {
  const int inset = picture.context.Scaled(kRowInset);
  return {row.left + inset, row.top, row.right - inset,
          row.top + picture.layout.pitch - picture.context.Scaled(kRowGap)};
}

void PaintGround(Canvas& canvas, const RowsPicture& picture, const Rect& row, Color color) {
  if (color == picture.colors.plain.ground) return;
  canvas.FillRound(GroundOf(picture, row), picture.context.Scaled(kRowRadius), color);
}

// The row that F2 renames, which need not be a chosen one.
void PaintFocus(Canvas& canvas, const RowsPicture& picture, const Rect& row, uint64_t index) {
  const bool hasFocus =
      picture.context.hasFocus && static_cast<int64_t>(index) == picture.list.selection.focusRow;
  if (!hasFocus) return;
  canvas.OutlineRound(GroundOf(picture, row), picture.context.Scaled(kRowRadius),
                      picture.context.palette.focusRing);
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

void PaintGrid(Canvas& canvas, const RowsPicture& picture, const Rect& row) {
  if (!CurrentWindowSettings.tableGridLines) return;
  const Rect& rows = picture.layout.rows;
  const Color color = picture.context.palette.border;
  for (int column = 0; column < kPathColumn; ++column) {
    const int right = CellOf(picture, row, column).right;
    if (right > rows.left && right < rows.right) {
      canvas.Fill({right - 1, row.top, right, row.bottom}, color);
    }
  }
  const int inset = picture.context.Scaled(kRowInset);
  canvas.Fill({row.left + inset, row.bottom - 1, row.right - inset, row.bottom}, color);
}

// A folder with a tab.
void PaintFolder(Canvas& canvas, Point middle, int size, Color color) {
  const int half = size / 2, tab = size / 6;
  const Rect body = {middle.x - half, middle.y - half + tab, middle.x + half, middle.y + half};
  canvas.FillRound({body.left, middle.y - half, middle.x, body.top + tab}, tab, color);
  canvas.FillRound(body, tab, color);
}

// A sheet with a folded corner.
void PaintSheet(Canvas& canvas, Point middle, int size, const RowColors& colors) {
  const int half = size / 2, fold = size / 4;
  const Rect body = {middle.x - half * 3 / 4, middle.y - half, middle.x + half * 3 / 4, middle.y + half};
  const Point sheet[] = {{body.left, body.top},
                         {body.right - fold, body.top},
                         {body.right, body.top + fold},
                         {body.right, body.bottom},
                         {body.left, body.bottom}};
  canvas.FillPolygon(sheet, colors.file);
  const Point corner[] = {{body.right - fold, body.top},
                          {body.right, body.top + fold},
                          {body.right - fold, body.top + fold}};
  canvas.FillPolygon(corner, MixColor(colors.file, colors.ground, 50));
}

void PaintGlyph(Canvas& canvas, Point middle, int size, bool isDirectory, const RowColors& colors) {
  if (isDirectory) return PaintFolder(canvas, middle, size, colors.folder);
  PaintSheet(canvas, middle, size, colors);
}

void PaintName(Canvas& canvas, const RowsPicture& picture, const Rect& place, const RowText& text,
               const RowColors& colors) {
  const ViewContext& context = picture.context;
  const int size = context.Scaled(kListIcon);
  const int left = place.left - context.Scaled(kCellTextInset - kCellClipInset);
  const CanvasClip clip(canvas, {left, place.top, place.right, place.bottom});
  PaintGlyph(canvas, {left + size / 2, (place.top + place.bottom) / 2}, size, text.isDirectory, colors);
  const auto hits = HighlightRanges(text.name, picture.term);
  canvas.Text({place.left + context.Scaled(kIconShift), place.top, place.right, place.bottom}, text.name,
              {.color = colors.text}, {.ranges = hits, .ground = colors.hit, .text = colors.hitText});
}

void PaintTableRow(Canvas& canvas, const RowsPicture& picture, const Rect& row, uint64_t index,
                   const RowText& text, const RowCells& cells) {
  const RowColors& colors = ColorsOf(picture, index);
  PaintGround(canvas, picture, row, colors.ground);
  if (text.name.empty()) return;  // a volume that went away
  const Rect& rows = picture.layout.rows;
  for (int column = 0; column < kColumns; ++column) {
    const Rect cell = CellOf(picture, row, column);
    if (cell.right <= rows.left || cell.left >= rows.right) continue;
    const Rect place = TextPlaceOf(picture.layout, cell, column);
    if (column == 1) {
      PaintName(canvas, picture, place, text, colors);
    } else {
      canvas.Text(place, CellText(text, cells, index, column), {.color = colors.muted});
    }
  }
  PaintGrid(canvas, picture, row);
  PaintFocus(canvas, picture, row, index);
}

void PaintIconCell(Canvas& canvas, const RowsPicture& picture, const Rect& cell, uint64_t index,
                   const RowText& text) {
  const ViewContext& context = picture.context;
  const RowColors& colors = ColorsOf(picture, index);
  PaintGround(canvas, picture, cell, colors.ground);
  if (text.name.empty()) return;
  const int size =
      context.Scaled(picture.layout.view == ViewMode::kSmallIcons ? kSmallIcon : kLargeIcon);
  const int top = cell.top + context.Scaled(kIconTop), inset = context.Scaled(kCellClipInset);
  PaintGlyph(canvas, {(cell.left + cell.right) / 2, top + size / 2}, size, text.isDirectory, colors);
  const auto hits = HighlightRanges(text.name, picture.term);
  PaintLines(canvas, context,
             {cell.left + inset, top + size + context.Scaled(kIconGap), cell.right - inset,
              cell.bottom - context.Scaled(kRowGap)},
             text.name, {.color = colors.text},
             {.ranges = hits, .ground = colors.hit, .text = colors.hitText});
  PaintFocus(canvas, picture, cell, index);
}

PaintOutcome PaintRow(Canvas& canvas, const RowsPicture& picture, uint64_t index, const MatchItem& hit) {
  const Rect place = PlaceOfRow(picture.layout, picture.scrollY, index);
  if (IsEmpty(Intersection(place, canvas.Shown()))) return {};
  const RowText text = TextOfRow(hit);
  PaintOutcome outcome{.isLater = text.isLater};
  if (picture.layout.view != ViewMode::kList) {
    PaintIconCell(canvas, picture, place, index, text);
    return outcome;
  }
  const RowCells cells = CellsOfRow(hit);
  PaintTableRow(canvas, picture, place, index, text, cells);
  outcome.Join({.isMissing = cells.isMissing, .isLater = cells.isLater});
  return outcome;
}

}  // namespace

PaintOutcome PaintRows(Canvas& canvas, const RowsPicture& picture) {
  PaintOutcome outcome;
  const auto rows = ShownResults();
  const RowsInView inView = RowsToPaint(picture.layout, picture.scrollY, rows->size());
  const CanvasClip clip(canvas, picture.layout.rows);
  for (uint64_t index = inView.first; index < inView.end; ++index) {
    outcome.Join(PaintRow(canvas, picture, index, (*rows)[index]));
  }
  return outcome;
}

void PaintHeader(Canvas& canvas, const RowsPicture& picture) {
  const ViewContext& context = picture.context;
  const Rect& header = picture.layout.header;
  if (header.top == header.bottom) return;
  canvas.Fill(header, picture.colors.band);
  const CanvasClip clip(canvas, header);
  for (int column = 0; column < kColumns; ++column) {
    const Rect cell = CellOf(picture, header, column);
    canvas.Text({cell.left + context.Scaled(kHeaderInset), cell.top, cell.right - context.Scaled(2),
                 cell.bottom},
                HeaderText(column), {.font = FontRole::kHeader, .color = picture.colors.bandText});
    if (CurrentWindowSettings.tableGridLines && column < kPathColumn) {
      canvas.Fill({cell.right - 1, cell.top, cell.right, cell.bottom}, context.palette.border);
    }
  }
}

}  // namespace quilmark
