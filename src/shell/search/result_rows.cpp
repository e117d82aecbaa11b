#include "shell/search/result_rows.h"

#include <algorithm>
#include <string>
#include <utility>

#include "config/translate.h"
#include "config/window_settings.h"
#include "search/results/search_session.h"
#include "search/sort/sort.h"
#include "shell/list/cell_text.h"
#include "shell/list/list_colors.h"
#include "shell/search/highlight.h"
#include "shell/search/list_scroll.h"
#include "shell/search/search_places.h"
#include "shell/view/text_lines.h"

namespace quilmark {

namespace {

// Pixels at 96 dpi.
constexpr int kRowInset = 8, kRowRadius = 8, kRowGap = 4, kHeaderInset = 12;
constexpr int kIconShift = 22, kIconTop = 8, kIconGap = 4;

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
  const ChosenSort sort = CurrentSort();
  if (column == sort.column) header += sort.ascending ? u" \u2191" : u" \u2193";
  return header;
}

// One row that is painted.
struct RowPicture {
  const ViewContext& context;
  ColumnsLayout columns;
  RowColors colors;
  RowPlace place;
  uint64_t index = 0;
  const RowText& text;
  const RowCells& cells;
  std::u16string_view term;
  int iconSize = 0;  // pixels
  IconRef icon = nullptr;
  bool hasFocus = false;  // the row that F2 renames, which need not be a chosen one
};

Rect CellOf(const ColumnsLayout& columns, const RowPlace& place, int column) {
  const int left = ColumnLeft(columns, place.shift, column);
  const int width = columns.columns[static_cast<size_t>(column)];
  return {left, place.row.top, left + width, place.row.bottom};
}

RowColors ColorsOf(const Palette& palette, bool isChosen, bool isHovered) {
  const ListColors colors = ListColorsOf(palette);
  if (isChosen) return colors.selected;
  return isHovered ? colors.hovered : colors.plain;
}

Rect GroundOf(const RowPicture& picture) {
  const Rect& row = picture.place.row;
  const int inset = picture.context.Scaled(kRowInset);
  return {row.left + inset, row.top, row.right - inset, row.bottom - picture.context.Scaled(kRowGap)};
}

void PaintGround(Canvas& canvas, const RowPicture& picture) {
  if (picture.colors.ground == picture.context.palette.surface) return;
  canvas.FillRound(GroundOf(picture), picture.context.Scaled(kRowRadius), picture.colors.ground);
}

void PaintFocus(Canvas& canvas, const RowPicture& picture) {
  if (!picture.hasFocus) return;
  canvas.OutlineRound(GroundOf(picture), picture.context.Scaled(kRowRadius),
                      picture.context.palette.focusRing);
}

std::u16string CellText(const RowPicture& picture, int column) {
  switch (column) {
    case 0:
      return RowNumberText(picture.index);
    case kColumnSize:
      return picture.cells.size;
    case kColumnModified:
      return picture.cells.modified;
    case kColumnCreated:
      return picture.cells.created;
    default:
      return picture.text.folder;
  }
}

void PaintGrid(Canvas& canvas, const RowPicture& picture) {
  if (!CurrentWindowSettings.tableGridLines) return;
  const Rect &rows = picture.columns.rows, &row = picture.place.row;
  const Color color = picture.context.palette.border;
  for (int column = 0; column < kPathColumn; ++column) {
    const int right = CellOf(picture.columns, picture.place, column).right;
    if (right > rows.left && right < rows.right) {
      canvas.Fill({right - 1, row.top, right, row.bottom}, color);
    }
  }
  const int inset = picture.context.Scaled(kRowInset);
  canvas.Fill({row.left + inset, row.bottom - 1, row.right - inset, row.bottom}, color);
}

// An icon whose left side stands at `left`, halfway between two heights.
void PaintIcon(Canvas& canvas, const RowPicture& picture, int left, int top, int bottom) {
  if (picture.icon == nullptr) return;
  const int size = picture.iconSize, iconTop = (top + bottom) / 2 - size / 2;
  canvas.Icon({left, iconTop, left + size, iconTop + size}, *picture.icon);
}

void PaintName(Canvas& canvas, const RowPicture& picture, const Rect& place) {
  const ViewContext& context = picture.context;
  const RowColors& colors = picture.colors;
  const RowText& text = picture.text;
  const int left = place.left - context.Scaled(kCellTextInset - kCellClipInset);
  const CanvasClip clip(canvas, {left, place.top, place.right, place.bottom});
  PaintIcon(canvas, picture, left, place.top, place.bottom);
  const auto hits = HighlightRanges(text.name, picture.term);
  canvas.Text({place.left + context.Scaled(kIconShift), place.top, place.right, place.bottom}, text.name,
              {.color = colors.text}, {.ranges = hits, .ground = colors.hit, .text = colors.hitText});
}

void PaintTableRow(Canvas& canvas, const RowPicture& picture) {
  const Rect& rows = picture.columns.rows;
  for (int column = 0; column < kColumns; ++column) {
    const Rect cell = CellOf(picture.columns, picture.place, column);
    if (cell.right <= rows.left || cell.left >= rows.right) continue;
    const Rect place = TextPlaceOf(picture.columns, cell, column);
    if (column == 1) {
      PaintName(canvas, picture, place);
    } else {
      canvas.Text(place, CellText(picture, column), {.color = picture.colors.muted});
    }
  }
  PaintGrid(canvas, picture);
}

void PaintIconCell(Canvas& canvas, const RowPicture& picture) {
  const ViewContext& context = picture.context;
  const RowColors& colors = picture.colors;
  const RowText& text = picture.text;
  const Rect& cell = picture.place.row;
  const int size = picture.iconSize;
  const int top = cell.top + context.Scaled(kIconTop), inset = context.Scaled(kCellClipInset);
  PaintIcon(canvas, picture, (cell.left + cell.right - size) / 2, top, top + size);
  const auto hits = HighlightRanges(text.name, picture.term);
  PaintLines(canvas, context,
             {cell.left + inset, top + size + context.Scaled(kIconGap), cell.right - inset,
              cell.bottom - context.Scaled(kRowGap)},
             text.name, {.color = colors.text},
             {.ranges = hits, .ground = colors.hit, .text = colors.hitText});
}

}  // namespace

uint64_t ResultRows::Count() const { return DisplayCount(); }

PaintOutcome ResultRows::Read(uint64_t first, uint64_t end) {
  const auto rows = ShownResults();
  const bool isTable = ViewModeOfSettings() == ViewMode::kList;
  PaintOutcome outcome;
  if (seen_.set.lock() != rows) seen_ = SeeRows(rows);
  showsChoice_ = view_.chosenFrom.IsSameSet(SeenRows()) || view_.chosenFrom.IsSameSet(seen_);
  first_ = first;
  read_.clear();
  term_ = HighlightTerm(TheSearch().CurrentQueryText);
  for (uint64_t row = first; row < std::min<uint64_t>(end, rows->size()); ++row) {
    const MatchItem& hit = (*rows)[row];
    read_.push_back({TextOfRow(hit), isTable ? CellsOfRow(hit) : RowCells()});
    const ReadRow& read = read_.back();
    outcome.Join({read.cells.isMissing, read.cells.isLater || read.text.isLater});
  }
  return outcome;
}

RowIcon ResultRows::IconOf(const RowText& row, const ViewContext& context, int size) const {
  if (view_.icons == nullptr || row.name.empty()) return {};
  // The shell may hand out messages, and with them another paint: the buffer is nobody else's until
  // then.
  std::u16string path = std::move(path_);
  RowIcon icon = IconOfRow(
      *view_.icons, row,
      {.view = ViewModeOfSettings(), .size = size, .isMoving = IsScrolling(view_, context.nowMs)}, path);
  path_ = std::move(path);
  return icon;
}

PaintOutcome ResultRows::PaintRow(Canvas& canvas, uint64_t row, const RowPlace& place,
                                  const ViewContext& context) const {
  if (row - first_ >= read_.size()) return {};
  const int iconSize = context.Scaled(IconSizeOf(ViewModeOfSettings()));
  RowIcon icon = IconOf(read_[row - first_].text, context, iconSize);
  // Another paint that came meanwhile may have read other rows.
  if (row - first_ >= read_.size()) return {};
  const ReadRow& read = read_[row - first_];
  const Selection& selection = view_.list.selection;
  const RowPicture picture{
      .context = context,
      .columns = PlaceColumns(view_, context),
      .colors = ColorsOf(context.palette, showsChoice_ && selection.rows.contains(row), place.isHovered),
      .place = place,
      .index = row,
      .text = read.text,
      .cells = read.cells,
      .term = term_,
      .iconSize = iconSize,
      .icon = std::move(icon.icon),
      .hasFocus = context.hasFocus && static_cast<int64_t>(row) == selection.focusRow};
  PaintGround(canvas, picture);
  if (read.text.name.empty()) return {};  // a volume that went away
  if (picture.columns.view == ViewMode::kList) {
    PaintTableRow(canvas, picture);
  } else {
    PaintIconCell(canvas, picture);
  }
  PaintFocus(canvas, picture);
  return {.isPictureMissing = icon.isPictureMissing};
}

void PaintHeader(Canvas& canvas, const ViewContext& context, const SearchView& view,
                 const ListColors& colors) {
  const ColumnsLayout columns = PlaceColumns(view, context);
  const RowPlace header{.row = columns.header, .shift = view.rows.scrollX};
  if (header.row.top == header.row.bottom) return;
  canvas.Fill(header.row, colors.band);
  const CanvasClip clip(canvas, header.row);
  for (int column = 0; column < kColumns; ++column) {
    const Rect cell = CellOf(columns, header, column);
    canvas.Text({cell.left + context.Scaled(kHeaderInset), cell.top, cell.right - context.Scaled(2),
                 cell.bottom},
                HeaderText(column), {.font = FontRole::kHeader, .color = colors.bandText});
    if (CurrentWindowSettings.tableGridLines && column < kPathColumn) {
      canvas.Fill({cell.right - 1, cell.top, cell.right, cell.bottom}, context.palette.border);
    }
  }
}

}  // namespace quilmark
