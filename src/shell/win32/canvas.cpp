#include "shell/win32/canvas.h"

#include <algorithm>
#include <span>

#include "platform/win32/wide.h"

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

// Hebrew, Arabic and their neighbours: the units do not stand in the order of the screen.
bool RunsRightToLeft(const std::u16string& text) {
  return std::any_of(text.begin(), text.end(), [](char16_t unit) {
    return (unit >= 0x0590 && unit <= 0x08FF) || (unit >= 0xFB1D && unit <= 0xFDFF) ||
           (unit >= 0xFE70 && unit <= 0xFEFF);
  });
}

}  // namespace

void Canvas::FillRound(const Rect& rect, int radius, Color color) const {
  SetDCBrushColor(dc, color);
  const SelectScope fill(dc, GetStockObject(DC_BRUSH));
  const SelectScope outline(dc, GetStockObject(NULL_PEN));
  // Without a pen the shape ends one pixel early.
  RoundRect(dc, rect.left, rect.top, rect.right + 1, rect.bottom + 1, radius, radius);
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

int Canvas::WidthOf(const char16_t* text, size_t length) const {
  SIZE size = {};
  GetTextExtentPoint32W(dc, Wide(text), static_cast<int>(length), &size);
  return size.cx;
}

void Canvas::MarkedLine(const Rect& rect, const std::u16string& text, const std::vector<TextRange>& hits,
                        const RowColors& colors) const {
  if (hits.empty()) return Line(rect, text, colors.text);
  // Where units and screen differ in order, parts cannot be drawn apart: the whole name is the hit.
  if (RunsRightToLeft(text)) return Line(rect, text, colors.wholeHit);
  const ClipScope clip(dc, rect);
  TEXTMETRICW metrics = {};
  GetTextMetricsW(dc, &metrics);
  const int top = (rect.top + rect.bottom - metrics.tmHeight) / 2;
  std::vector<Rect> places;
  for (const TextRange& hit : hits) {
    const int left = rect.left + WidthOf(text.data(), hit.begin);
    const int right = rect.left + WidthOf(text.data(), hit.begin + hit.length);
    places.push_back({left, top, right, top + metrics.tmHeight});
  }
  Line(rect, text, colors.text);
  // Drawn once more and cut out, so that both stand on the same pixels.
  for (const Rect& place : places) {
    const ClipScope one(dc, place);
    Fill(place, colors.hit);
    Line(rect, text, colors.hitText);
  }
}

void Canvas::MarkedLines(const Rect& rect, const std::u16string& text,
                         const std::vector<TextRange>& hits, const RowColors& colors) const {
  TEXTMETRICW metrics = {};
  GetTextMetricsW(dc, &metrics);
  const int width = rect.right - rect.left, height = std::max<int>(metrics.tmHeight, 1);
  size_t begin = 0;
  for (int top = rect.top; begin < text.size(); top += height) {
    std::u16string line = text.substr(begin);
    int fitting = 0;
    SIZE size = {};
    GetTextExtentExPointW(dc, Wide(line), static_cast<int>(line.size()), width, &fitting, nullptr,
                          &size);
    const bool isLast = top + 2 * height > rect.bottom;
    if (!isLast) line.resize(LineLength(line, static_cast<size_t>(std::max(fitting, 0))));
    const int shown = std::min(WidthOf(line.data(), line.size()), width);
    const int left = rect.left + (width - shown) / 2;
    MarkedLine({left, top, left + shown + 1, top + height}, line, RangesOfLine(hits, begin, line.size()),
               colors);
    begin += line.size();
    if (isLast) return;
  }
}

}  // namespace quilmark
