#include "shell/win32/gdi/gdi_canvas.h"

#include <algorithm>

#include "platform/win32/wide.h"
#include "shell/win32/gdi/gdi_icon.h"
#include "shell/win32/gdi/mixed_line.h"

namespace quilmark {

namespace {

UINT FormatOf(const TextStyle& style) {
  constexpr UINT kAligns[] = {DT_LEFT, DT_CENTER, DT_RIGHT};
  constexpr UINT kCuts[] = {DT_END_ELLIPSIS, DT_PATH_ELLIPSIS};
  return DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX | kAligns[static_cast<size_t>(style.align)] |
         kCuts[static_cast<size_t>(style.cut)];
}

// The line as it is shown, with an ellipsis where it does not fit.
std::u16string ShownPart(HDC dc, const Rect& rect, std::u16string_view text, const TextStyle& style) {
  constexpr size_t kRoomForEllipsis = 4;
  std::u16string shown(text);
  shown.resize(text.size() + kRoomForEllipsis);
  const int saved = SaveDC(dc);
  IntersectClipRect(dc, 0, 0, 0,
                    0);  // nothing is to be drawn: the call only tells the text that it would draw
  RECT place = ToRECT(rect);
  DrawTextW(dc, Wide(shown.data()), static_cast<int>(text.size()), &place,
            FormatOf(style) | DT_MODIFYSTRING);
  RestoreDC(dc, saved);
  return shown.c_str();
}

}  // namespace

GdiCanvas::GdiCanvas(HDC dc, const GdiFonts& fonts, const Rect& shown)
    : dc_(dc), fonts_(fonts), shown_(shown), firstFont_(GetCurrentObject(dc, OBJ_FONT)) {
  SelectObject(dc_, fonts_.Of(font_));
  SetBkMode(dc_, TRANSPARENT);
}

GdiCanvas::~GdiCanvas() { SelectObject(dc_, firstFont_); }

void GdiCanvas::Select(FontRole font) {
  if (font == font_) return;
  SelectObject(dc_, fonts_.Of(font));
  font_ = font;
}

bool GdiCanvas::ShowsNothingOf(const Rect& rect) const { return IsEmpty(Intersection(rect, shown_)); }

void GdiCanvas::Fill(const Rect& rect, Color color) { FillWith(dc_, ToRECT(rect), color); }

void GdiCanvas::FillRound(const Rect& rect, int radius, Color color) {
  SetDCBrushColor(dc_, color);
  const SelectScope fill(dc_, GetStockObject(DC_BRUSH));
  const SelectScope outline(dc_, GetStockObject(NULL_PEN));
  // Without a pen the shape ends one pixel early.
  RoundRect(dc_, rect.left, rect.top, rect.right + 1, rect.bottom + 1, radius, radius);
}

void GdiCanvas::Outline(const Rect& rect, Color color) { FrameWith(dc_, ToRECT(rect), color); }

void GdiCanvas::OutlineRound(const Rect& rect, int radius, Color color) {
  SetDCPenColor(dc_, color);
  const SelectScope hollow(dc_, GetStockObject(HOLLOW_BRUSH));
  const SelectScope outline(dc_, GetStockObject(DC_PEN));
  RoundRect(dc_, rect.left, rect.top, rect.right, rect.bottom, radius, radius);
}

void GdiCanvas::FillPolygon(std::span<const Point> points, Color color) {
  static_assert(sizeof(Point) == sizeof(POINT) && sizeof(int) == sizeof(LONG));
  SetDCBrushColor(dc_, color);
  const SelectScope fill(dc_, GetStockObject(DC_BRUSH));
  const SelectScope outline(dc_, GetStockObject(NULL_PEN));
  Polygon(dc_, reinterpret_cast<const POINT*>(points.data()), static_cast<int>(points.size()));
}

void GdiCanvas::Text(const Rect& rect, std::u16string_view text, const TextStyle& style,
                     const Marks& marks) {
  if (ShowsNothingOf(rect)) return;
  Select(style.font);
  if (style.align == Align::kLeft && RunsRightToLeft(text)) return MixedText(rect, text, style, marks);
  if (marks.ranges.empty()) return Line(rect, text, style);
  MarkedLine(rect, text, style, marks);
}

void GdiCanvas::Line(const Rect& rect, std::u16string_view text, const TextStyle& style) const {
  SetTextColor(dc_, style.color);
  RECT place = ToRECT(rect);
  DrawTextW(dc_, Wide(text.data()), static_cast<int>(text.size()), &place, FormatOf(style));
}

// Allocates nothing: rows with hits are drawn at each turn of the wheel.
template <typename SpanOf, typename DrawIt>
void GdiCanvas::DrawMarked(const Rect& rect, size_t spans, SpanOf spanOf, const TextStyle& style,
                           const Marks& marks, DrawIt draw) {
  const CanvasClip clip(*this, rect);
  const int height = fonts_.LineHeight(style.font), top = (rect.top + rect.bottom - height) / 2;
  draw(top, style.color);
  // Drawn once more and cut out, so that both stand on the same pixels.
  for (size_t i = 0; i < spans; ++i) {
    const PixelSpan span = spanOf(i);
    const Rect place = {rect.left + span.left, top, rect.left + span.right, top + height};
    const CanvasClip one(*this, place);
    Fill(place, marks.ground);
    draw(top, marks.text);
  }
}

void GdiCanvas::MarkedLine(const Rect& rect, std::u16string_view text, const TextStyle& style,
                           const Marks& marks) {
  const auto spanOf = [&](size_t mark) {
    const TextRange& hit = marks.ranges[mark];
    return PixelSpan{fonts_.WidthOf(style.font, text.substr(0, hit.begin)),
                     fonts_.WidthOf(style.font, text.substr(0, hit.begin + hit.length))};
  };
  DrawMarked(rect, marks.ranges.size(), spanOf, style, marks,
             [&](int, Color color) { Line(rect, text, {.font = style.font, .color = color}); });
}

// Draws a line of which a part runs from right to left. Units cut off its end move all the others.
void GdiCanvas::MixedText(const Rect& rect, std::u16string_view text, const TextStyle& style,
                          const Marks& marks) {
  // The system calls a text wider than it is where it draws parts of it in other fonts.
  const bool fits = fonts_.WidthOf(style.font, text) <= Width(rect);
  const std::u16string shown = fits ? std::u16string(text) : ShownPart(dc_, rect, text, style);
  const MixedLine line(dc_, shown);
  if (!line.IsReady()) return Line(rect, text, style);
  const auto spans = line.SpansOf(RangesOfLine(marks.ranges, 0, ShownUnits(text, shown)));
  const auto spanOf = [&](size_t span) { return spans[span]; };
  DrawMarked(rect, spans.size(), spanOf, style, marks, [&](int top, Color color) {
    SetTextColor(dc_, color);
    line.Draw(rect.left, top);
  });
}

void GdiCanvas::Icon(const Rect& rect, const IconImage& icon) {
  if (ShowsNothingOf(rect)) return;
  const Rect place = icon.PlaceIn(rect);
  DrawIconEx(dc_, place.left, place.top, static_cast<const GdiIcon&>(icon).Handle(), Width(place),
             Height(place), 0, nullptr, DI_NORMAL);
}

void GdiCanvas::PushClip(const Rect& rect) {
  clips_.at(depth_++) = {.saved = SaveDC(dc_), .shown = shown_, .font = font_};
  IntersectClipRect(dc_, rect.left, rect.top, rect.right, rect.bottom);
  shown_ = Intersection(shown_, rect);
}

void GdiCanvas::PopClip() {
  const Clip& clip = clips_[--depth_];
  RestoreDC(dc_, clip.saved);
  shown_ = clip.shown;
  font_ = clip.font;
}

}  // namespace quilmark
