#include "shell/win32/list_paint.h"

#include "config/palette.h"
#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/win32/wide.h"
#include "search/filtered_results.h"
#include "shell/row_text.h"

namespace quilmark {

namespace {

constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX;
// Pixels at 96 dpi.
constexpr int kTextInset = 15, kRowInset = 8;

struct Canvas {
  HDC dc;
  const MainWindow& window;
  ListLayout list;
  int Scaled(int n) const { return ScaleFor(App().systemDpi, n); }
};

void DrawLine(const Canvas& canvas, HFONT font, Color color, const RECT& place,
              const std::u16string& text) {
  const SelectScope selected(canvas.dc, font);
  SetTextColor(canvas.dc, color);
  RECT rect = place;
  DrawTextW(canvas.dc, Wide(text), static_cast<int>(text.size()), &rect, kOneLine);
}

// Names end here and paths begin: two columns until the user has more.
int PathLeft(const Canvas& canvas) {
  const int width = canvas.list.rows.right;
  return std::max(canvas.Scaled(200), width * 2 / 5);
}

void DrawTop(const Canvas& canvas) {
  const RECT toolbar = {0, 0, App().clientWidth, App().headerTop};
  FillWith(canvas.dc, toolbar, CurrentPalette.toolbar);
  const RECT line = {0, App().headerTop - 1, App().clientWidth, App().headerTop};
  FillWith(canvas.dc, line, CurrentPalette.border);
  const RECT status = {canvas.Scaled(20), canvas.Scaled(56), App().clientWidth - canvas.Scaled(20),
                       App().headerTop - 2};
  DrawLine(canvas, canvas.window.fonts.main.Get(), CurrentPalette.muted, status,
           canvas.window.StatusText());
}

void DrawHeader(const Canvas& canvas) {
  RECT header = ToRECT(canvas.list.header);
  FillWith(canvas.dc, header, CurrentPalette.headerBackground);
  const HFONT font = canvas.window.fonts.header.Get();
  RECT name = header, path = header;
  name.left += canvas.Scaled(kTextInset);
  name.right = PathLeft(canvas);
  path.left = PathLeft(canvas) + canvas.Scaled(kTextInset);
  DrawLine(canvas, font, CurrentPalette.header, name, TranslateOr(u"Header_Name", u"Name"));
  DrawLine(canvas, font, CurrentPalette.header, path, TranslateOr(u"Header_Path", u"Path"));
}

void DrawRow(const Canvas& canvas, int top, const MatchItem& item) {
  const RowText text = TextOfRow(item);
  const int bottom = top + canvas.list.pitch;
  const RECT name = {canvas.Scaled(kTextInset), top, PathLeft(canvas) - canvas.Scaled(kTextInset),
                     bottom};
  const RECT path = {PathLeft(canvas) + canvas.Scaled(kTextInset), top,
                     canvas.list.rows.right - canvas.Scaled(kTextInset), bottom};
  DrawLine(canvas, canvas.window.fonts.list.Get(), CurrentPalette.text, name, text.name);
  DrawLine(canvas, canvas.window.fonts.list.Get(), CurrentPalette.muted, path, text.folder);
  if (!CurrentWindowSettings.tableGridLines) return;
  const RECT line = {canvas.Scaled(kRowInset), bottom - 1,
                     canvas.list.rows.right - canvas.Scaled(kRowInset), bottom};
  FillWith(canvas.dc, line, CurrentPalette.border);
}

void DrawRows(const Canvas& canvas) {
  const auto rows = ShownResults();
  const RowsInView inView = RowsToPaint(App().scrollY, rows->size(), canvas.list);
  const int64_t first = static_cast<int64_t>(inView.first) * canvas.list.pitch - App().scrollY;
  int top = canvas.list.rows.top + static_cast<int>(first);
  for (uint64_t row = inView.first; row < inView.end; ++row, top += canvas.list.pitch) {
    DrawRow(canvas, top, (*rows)[row]);
  }
}

}  // namespace

void PaintWindow(HDC dc, const MainWindow& window) {
  const Canvas canvas{dc, window, window.List()};
  SetBkMode(dc, TRANSPARENT);
  const RECT all = {0, 0, App().clientWidth, App().clientHeight};
  FillWith(dc, all, CurrentPalette.surface);
  DrawRows(canvas);
  // After the rows: the one at the top may stand out of the list.
  DrawHeader(canvas);
  DrawTop(canvas);
}

void MainWindow::Paint() {
  PAINTSTRUCT paint;
  const HDC screen = BeginPaint(window_, &paint);
  ++paints;
  if (backBuffer.IsReady()) {
    PaintWindow(backBuffer.Dc(), *this);
    BitBlt(screen, 0, 0, App().clientWidth, App().clientHeight, backBuffer.Dc(), 0, 0, SRCCOPY);
  }
  EndPaint(window_, &paint);
}

}  // namespace quilmark
