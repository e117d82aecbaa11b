#include "shell/win32/canvas.h"

#include <algorithm>
#include <span>

#include "platform/win32/wide.h"
#include "shell/win32/mixed_line.h"

namespace quilmark {

namespace {

constexpr UINT kOneLine = DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX;

void DrawIn(HDC dc, const Rect& rect, const std::u16string& text, Color color, UINT format) {
  if (rect.right <= rect.left || rect.bottom <= rect.top) return;
  SetTextColor(dc, color);
  RECT place = ToRECT(rect);
  DrawTextW(dc, Wide(text), static_cast<int>(text.size()), &place, format);
}

void FillShape(HDC dc, std::span<const POINT> points, Color color) {
  SetDCBrushColor(dc, color);
  const SelectScope fill(dc, GetStockObject(DC_BRUSH));
  const SelectScope outline(dc, GetStockObject(NULL_PEN));
  Polygon(dc, points.data(), static_cast<int>(points.size()));
}

// What of a line is shown, with an ellipsis where the end does not fit.
std::u16string ShownPart(HDC dc, const Rect& rect, const std::u16string& text) {
  constexpr size_t kRoomForEllipsis = 4;
  std::u16string shown = text;
  shown.resize(text.size() + kRoomForEllipsis);
  const ClipScope nothing(dc, {});  // to be told is all: it is drawn in another way
  RECT place = ToRECT(rect);
  DrawTextW(dc, Wide(shown), static_cast<int>(text.size()), &place, kOneLine | DT_MODIFYSTRING);
  return shown.c_str();
}

}  // namespace

void Canvas::FillRound(const Rect& rect, int radius, Color color) const {
  SetDCBrushColor(dc, color);
  const SelectScope fill(dc, GetStockObject(DC_BRUSH));
  const SelectScope outline(dc, GetStockObject(NULL_PEN));
  // Without a pen the shape ends one pixel early.
  RoundRect(dc, rect.left, rect.top, rect.right + 1, rect.bottom + 1, radius, radius);
}

void Canvas::OutlineRound(const Rect& rect, int radius, Color color) const {
  SetDCPenColor(dc, color);
  const SelectScope hollow(dc, GetStockObject(HOLLOW_BRUSH));
  const SelectScope outline(dc, GetStockObject(DC_PEN));
  RoundRect(dc, rect.left, rect.top, rect.right, rect.bottom, radius, radius);
}

void Canvas::FillCut(const Rect& rect, int corner, Color color) const {
  const POINT points[] = {{rect.left, rect.top},
                          {rect.right - corner, rect.top},
                          {rect.right, rect.top + corner},
                          {rect.right, rect.bottom},
                          {rect.left, rect.bottom}};
  FillShape(dc, points, color);
}

void Canvas::FillCorner(const Rect& rect, Color color) const {
  const POINT points[] = {{rect.left, rect.top}, {rect.right, rect.bottom}, {rect.left, rect.bottom}};
  FillShape(dc, points, color);
}

void Canvas::Line(const Rect& rect, const std::u16string& text, Color color) const {
  DrawIn(dc, rect, text, color, kOneLine);
}

void Canvas::Middle(const Rect& rect, const std::u16string& text, Color color) const {
  DrawIn(dc, rect, text, color, kOneLine | DT_CENTER);
}

int Canvas::LineHeight() const {
  TEXTMETRICW metrics = {};
  GetTextMetricsW(dc, &metrics);
  return std::max<int>(metrics.tmHeight, 1);
}

int Canvas::WidthOf(const char16_t* text, size_t length) const {
  SIZE size = {};
  GetTextExtentPoint32W(dc, Wide(text), static_cast<int>(length), &size);
  return size.cx;
}

template <typename DrawIt>
void Canvas::DrawMarked(const Rect& rect, const std::vector<PixelSpan>& spans, const RowColors& colors,
                        DrawIt draw) const {
  const ClipScope clip(dc, rect);
  const int height = LineHeight(), top = (rect.top + rect.bottom - height) / 2;
  draw(top, colors.text);
  // Drawn once more and cut out, so that both stand on the same pixels.
  for (const PixelSpan& span : spans) {
    const Rect place = {rect.left + span.left, top, rect.left + span.right, top + height};
    const ClipScope one(dc, place);
    Fill(place, colors.hit);
    draw(top, colors.hitText);
  }
}

void Canvas::MarkedLine(const Rect& rect, const std::u16string& text, const std::vector<TextRange>& hits,
                        const RowColors& colors) const {
  if (RunsRightToLeft(text)) {
    // What is cut off the end of such a text moves all the rest of it.
    const std::u16string shown = ShownPart(dc, rect, text);
    const MixedLine line(dc, shown);
    if (!line.IsReady()) return Line(rect, text, colors.text);
    const auto spans = line.SpansOf(RangesOfLine(hits, 0, ShownUnits(text, shown)));
    return DrawMarked(rect, spans, colors, [&](int top, Color color) {
      SetTextColor(dc, color);
      line.Draw(rect.left, top);
    });
  }
  if (hits.empty()) return Line(rect, text, colors.text);
  std::vector<PixelSpan> spans;
  for (const TextRange& hit : hits) {
    spans.push_back({WidthOf(text.data(), hit.begin), WidthOf(text.data(), hit.begin + hit.length)});
  }
  DrawMarked(rect, spans, colors, [&](int, Color color) { Line(rect, text, color); });
}

void Canvas::MarkedLines(const Rect& rect, const std::u16string& text,
                         const std::vector<TextRange>& hits, const RowColors& colors) const {
  const int width = rect.right - rect.left, height = LineHeight();
  size_t begin = 0;
  for (int top = rect.top; begin < text.size(); top += height) {
    std::u16string line = text.substr(begin);
    int fitting = 0;
    SIZE size = {};
    GetTextExtentExPointW(dc, Wide(line), static_cast<int>(line.size()), width, &fitting, nullptr,
                          &size);
    const bool isLast = top + 2 * height > rect.bottom;
    if (!isLast) line.resize(LineLength(line, static_cast<size_t>(std::max(fitting, 0))));
    const size_t length = line.size();
    if (!isLast) line.resize(InkLength(line));
    const int shown = std::min(WidthOf(line.data(), line.size()), width);
    const int left = rect.left + (width - shown) / 2;
    MarkedLine({left, top, left + shown + 1, top + height}, line, RangesOfLine(hits, begin, line.size()),
               colors);
    begin += length;
    if (isLast) return;
  }
}

}  // namespace quilmark
