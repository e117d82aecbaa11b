#include "support/recording_canvas.h"

#include <algorithm>

namespace quilmark {

namespace {

Rect BoxOf(std::span<const Point> points) {
  Rect box = {points[0].x, points[0].y, points[0].x, points[0].y};
  for (const Point& point : points) {
    box = {std::min(box.left, point.x), std::min(box.top, point.y), std::max(box.right, point.x),
           std::max(box.bottom, point.y)};
  }
  return box;
}

// By the even-odd rule, at the middle of the pixel.
bool IsWithin(std::span<const Point> points, int x, int y) {
  bool isWithin = false;
  for (size_t i = 0, j = points.size() - 1; i < points.size(); j = i++) {
    const double px = x + 0.5, py = y + 0.5;
    if ((points[i].y > py) == (points[j].y > py)) continue;
    const double cross =
        points[i].x + (py - points[i].y) * (points[j].x - points[i].x) / (points[j].y - points[i].y);
    if (px < cross) isWithin = !isWithin;
  }
  return isWithin;
}

Rect InkIn(const Rect& place, std::u16string_view text, const TextStyle& style,
           const TextMeasure& fonts) {
  const int width = std::min(fonts.WidthOf(style.font, text), Width(place));
  const int height = fonts.LineHeight(style.font), top = (place.top + place.bottom - height) / 2;
  const int left = style.align == Align::kLeft     ? place.left
                   : style.align == Align::kCentre ? (place.left + place.right - width) / 2
                                                   : place.right - width;
  return {left, top, left + width, top + height};
}

}  // namespace

Rect InkOf(const Drawn& text, const TextMeasure& fonts) {
  return InkIn(text.place, text.text, text.style, fonts);
}

void RecordingCanvas::Add(Drawn::Kind kind, const Rect& rect, Color color) {
  const Rect shown = Intersection(rect, Shown());
  if (!IsEmpty(shown)) drawn.push_back({.kind = kind, .place = rect, .shown = shown, .color = color});
}

void RecordingCanvas::FillPolygon(std::span<const Point> points, Color color) {
  Add(Drawn::kFill, BoxOf(points), color);
}

void RecordingCanvas::Text(const Rect& rect, std::u16string_view text, const TextStyle& style,
                           const Marks& marks) {
  const size_t before = drawn.size();
  Add(Drawn::kText, rect, style.color);
  if (drawn.size() == before || text.empty()) return drawn.resize(before);
  drawn.back().text = text;
  drawn.back().style = style;
  drawn.back().marked.assign(marks.ranges.begin(), marks.ranges.end());
  drawn.back().markGround = marks.ground;
  drawn.back().markText = marks.text;
}

void RecordingCanvas::Icon(const Rect& rect, const IconImage& icon) {
  const size_t before = drawn.size();
  Add(Drawn::kIcon, rect, 0);
  if (drawn.size() > before) drawn.back().icon = &icon;
}

void RasterCanvas::Fill(const Rect& rect, Color color) {
  const Rect shown = Intersection(rect, Shown());
  for (int y = shown.top; y < shown.bottom; ++y) {
    const auto row = pixels->begin() + static_cast<ptrdiff_t>(y) * width;
    std::fill(row + shown.left, row + std::max(shown.right, shown.left), color);
  }
}

void RasterCanvas::FillRound(const Rect& rect, int radius, Color color) {
  const int corner = std::min({radius / 3, Width(rect) / 2, Height(rect) / 2});
  Fill({rect.left + corner, rect.top, rect.right - corner, rect.bottom}, color);
  Fill({rect.left, rect.top + corner, rect.right, rect.bottom - corner}, color);
}

void RasterCanvas::Outline(const Rect& rect, Color color) {
  Fill({rect.left, rect.top, rect.right, rect.top + 1}, color);
  Fill({rect.left, rect.bottom - 1, rect.right, rect.bottom}, color);
  Fill({rect.left, rect.top, rect.left + 1, rect.bottom}, color);
  Fill({rect.right - 1, rect.top, rect.right, rect.bottom}, color);
}

void RasterCanvas::FillPolygon(std::span<const Point> points, Color color) {
  const Rect box = Intersection(BoxOf(points), Shown());
  for (int y = box.top; y < box.bottom; ++y) {
    for (int x = box.left; x < box.right; ++x) {
      if (IsWithin(points, x, y)) Fill({x, y, x + 1, y + 1}, color);
    }
  }
}

void RasterCanvas::Text(const Rect& rect, std::u16string_view text, const TextStyle& style,
                        const Marks& marks) {
  const Rect ink = InkIn(rect, text, style, fonts_);
  const CanvasClip clip(*this, rect);
  int x = ink.left;
  for (size_t i = 0; i < text.size(); ++i) {
    const bool isMarked =
        std::any_of(marks.ranges.begin(), marks.ranges.end(),
                    [&](const TextRange& one) { return i >= one.begin && i < one.begin + one.length; });
    const Color color = (isMarked ? marks.text ^ marks.ground : style.color) + text[i] * 0x010101u;
    const int advance = fonts_.WidthOf(style.font, text.substr(i, 1));
    Fill({x, ink.top, x + advance, ink.bottom}, color & 0xFFFFFF);
    x += advance;
  }
}

void RasterCanvas::Icon(const Rect& rect, const IconImage& icon) { Fill(icon.PlaceIn(rect), 0x3366CC); }

}  // namespace quilmark
