#include "shell/list/list_view.h"

#include <algorithm>
#include <utility>

#include "platform/mul_div.h"

namespace quilmark {

namespace {

constexpr int kSidewaysStep = 40;  // pixels: of a notch, and of a scrollbar's line
constexpr int kThumbPercent = 45;

int LengthAt(uint32_t dpi, int n) { return n == 0 ? 0 : std::max(ScaleFor(dpi, n), 1); }

void PaintBar(Canvas& canvas, const ViewContext& context, const std::optional<Scrollbar>& bar,
              const BarColors& colors, bool isActive) {
  if (!bar || IsEmpty(Intersection(bar->track, canvas.Shown()))) return;
  canvas.Fill(bar->track, colors.track);
  canvas.FillRound(bar->thumb, context.Scaled(kThumbRadius), isActive ? colors.heldThumb : colors.thumb);
}

// The sum of both, cut where it would not fit 64 bits.
int64_t Sum(int64_t offset, int64_t more) {
  constexpr int64_t kFarthest = int64_t{1} << 62;
  return std::clamp(offset, -kFarthest, kFarthest) + std::clamp(more, -kFarthest, kFarthest - 1);
}

}  // namespace

BarColors BarColorsOn(const Palette& palette, Color ground) {
  if (palette.isSystem) return {.track = ground, .thumb = palette.text, .heldThumb = palette.focusRing};
  return {.track = ground,
          .thumb = MixColor(palette.text, ground, kThumbPercent),
          .heldThumb = palette.accent};
}

void ListView::SetStyle(const ListStyle& style) {
  style_ = style;
  scrollY = 0;
  scrollX = 0;
  hoverRow = -1;
}

void ListView::Place(const Rect& rows, int contentWidth, const ViewContext& context) {
  rows_ = {rows.left, rows.top, std::max(rows.right, rows.left), std::max(rows.bottom, rows.top)};
  contentWidth_ = contentWidth;
  dpi_ = context.dpi;
  const RowGrid grid = Grid();
  scrollY = ClampScroll(grid, scrollY, source_.Count());
  scrollX = ClampHorizontal(grid, scrollX);
}

void ListView::Rescale(uint32_t from, uint32_t to) {
  const int former = from == 0 ? 96 : static_cast<int>(from),
            wanted = to == 0 ? 96 : static_cast<int>(to);
  // A line is as many whole pixels high as its scale rounds it to: lines are counted, not pixels.
  const int formerPitch = std::max(LengthAt(from, style_.pitch), 1);
  const int64_t pitch = std::max(LengthAt(to, style_.pitch), 1);
  constexpr int64_t kFarthest = int64_t{1} << 46;  // pixels
  const int64_t y = std::clamp<int64_t>(scrollY, 0, kFarthest);
  scrollY = y / formerPitch * pitch + y % formerPitch * pitch / formerPitch;
  scrollX = MulDiv(scrollX, wanted, former);
}

RowGrid ListView::Grid() const {
  RowGrid grid{.rows = rows_,
               .pitch = LengthAt(dpi_, style_.pitch),
               .cellWidth = LengthAt(dpi_, style_.cell),
               .contentWidth = contentWidth_,
               .bar = LengthAt(dpi_, style_.bar),
               .leastThumb = LengthAt(dpi_, style_.leastThumb),
               .slack = style_.slack};
  if (style_.barTakesRoom && VerticalBar(grid, 0, source_.Count())) {
    grid.rows.right = std::max(rows_.right - grid.bar, rows_.left);
  }
  return grid;
}

std::optional<Scrollbar> ListView::PlaceBar(const RowGrid& grid, Bar kind) const {
  if (kind == Bar::kNone) return std::nullopt;
  return kind == Bar::kVertical ? VerticalBar(grid, scrollY, source_.Count())
                                : HorizontalBar(grid, scrollX);
}

Rect ListView::Area() const {
  const RowGrid grid = Grid();
  Rect area = grid.rows;
  for (const Bar kind : {Bar::kVertical, Bar::kHorizontal}) {
    if (const auto bar = PlaceBar(grid, kind)) area = Union(area, bar->track);
  }
  return area;
}

int64_t ListView::RowAt(Point point) const {
  return quilmark::RowAt(Grid(), scrollY, source_.Count(), point);
}

Rect ListView::PlaceOf(uint64_t row) const { return PlaceOfRow(Grid(), scrollY, row); }

RowSpan ListView::InView(uint64_t rowCount) const { return RowsToPaint(Grid(), scrollY, rowCount); }

Bar ListView::BarAt(Point point) const {
  const RowGrid grid = Grid();
  for (const Bar kind : {Bar::kVertical, Bar::kHorizontal}) {
    const auto bar = PlaceBar(grid, kind);
    if (bar && Holds(bar->track, point)) return kind;
  }
  return Bar::kNone;
}

ScrollState ListView::StateOf(const RowGrid& grid, Bar kind) const {
  if (kind == Bar::kVertical) {
    const int64_t limit = ScrollLimit(grid, source_.Count());
    return {Height(grid.rows), limit, std::clamp<int64_t>(scrollY, 0, limit)};
  }
  return {Width(grid.rows), HorizontalLimit(grid), ClampHorizontal(grid, scrollX)};
}

BarRange ListView::RangeOf(Bar kind, int id) const { return RangeOfBar(id, StateOf(Grid(), kind)); }

PaintOutcome ListView::Paint(Canvas& canvas, const ViewContext& context, const BarColors& colors) const {
  const RowGrid grid = Grid();
  PaintOutcome outcome;
  const RowSpan rows = RowsWithin(grid, scrollY, source_.Count(), canvas.Shown());
  if (rows.first < rows.end) {
    outcome = source_.Read(rows.first, rows.end);
    const CanvasClip clip(canvas, grid.rows);
    for (uint64_t row = rows.first; row < rows.end; ++row) {
      const Rect place = PlaceOfRow(grid, scrollY, row);
      if (IsEmpty(Intersection(place, canvas.Shown()))) continue;
      const bool isHovered = static_cast<int64_t>(row) == hoverRow;
      outcome.Join(source_.PaintRow(canvas, row,
                                    {.row = place, .shift = scrollX, .isHovered = isHovered}, context));
    }
  }
  for (const Bar kind : {Bar::kVertical, Bar::kHorizontal}) {
    PaintBar(canvas, context, PlaceBar(grid, kind), colors, kind == hoverBar || kind == dragBar);
  }
  return outcome;
}

Rect ListView::HoverPlace() const {
  const RowGrid grid = Grid();
  if (hoverRow >= 0) {
    return Intersection(PlaceOfRow(grid, scrollY, static_cast<uint64_t>(hoverRow)), grid.rows);
  }
  const auto bar = PlaceBar(grid, hoverBar);
  return bar ? bar->track : Rect();
}

Effects ListView::Scrolled() const {
  return {.syncsBars = true, .rehovers = dragBar == Bar::kNone, .dirty = Area()};
}

Effects ListView::ScrollTo(int64_t y) {
  const int64_t clamped = ClampScroll(Grid(), y, source_.Count());
  if (clamped == scrollY) return {};
  scrollY = clamped;
  hoverRow = -1;  // until the view is told where the mouse stands: another row is there now
  return Scrolled();
}

Effects ListView::ScrollSidewaysTo(int64_t x) {
  const int clamped = ClampHorizontal(Grid(), x);
  if (clamped == scrollX) return {};
  scrollX = clamped;
  return Scrolled();
}

Effects ListView::MoveThumb(Bar kind, Point cursor) {
  const RowGrid grid = Grid();
  const auto bar = PlaceBar(grid, kind);
  if (!bar) return {};
  const bool isVertical = kind == Bar::kVertical;
  const int64_t offset =
      OffsetUnder(*bar, kind, isVertical ? cursor.y : cursor.x, StateOf(grid, kind).limit);
  return isVertical ? ScrollTo(offset) : ScrollSidewaysTo(offset);
}

ListPress ListView::Press(Point point) {
  ListPress press{.effects = EndDrag(),
                  .bar = BarAt(point)};  // the release of the button before may have been lost
  if (press.bar == Bar::kNone) {
    press.row = RowAt(point);
    return press;
  }
  const auto bar = PlaceBar(Grid(), press.bar);
  if (!bar) {  // fewer rows by now
    press.bar = Bar::kNone;
    press.row = RowAt(point);
    return press;
  }
  const bool isOnThumb = Holds(bar->thumb, point);
  if (!isOnThumb) press.effects.Join(MoveThumb(press.bar, point));
  if (isOnThumb || style_.trackDrags) {
    dragBar = press.bar;
    press.effects.Join({.capture = Capture::kTake, .dirty = bar->track});
  }
  return press;
}

Effects ListView::Move(Point point) {
  if (dragBar != Bar::kNone) return MoveThumb(dragBar, point);
  const Bar bar = BarAt(point);
  const int64_t row = bar == Bar::kNone ? RowAt(point) : int64_t{-1};
  Effects effects{.tracksMouse = true};
  if (bar == hoverBar && row == hoverRow) return effects;
  const Rect former = HoverPlace();
  hoverBar = bar;
  hoverRow = row;
  effects.dirty = Union(former, HoverPlace());
  return effects;
}

Effects ListView::EndDrag() {
  const Bar held = std::exchange(dragBar, Bar::kNone);
  if (held == Bar::kNone) return {};
  const auto bar = PlaceBar(Grid(), held);
  return {.syncsBars = true, .rehovers = true, .dirty = bar ? bar->track : Rect()};
}

Effects ListView::Release() {
  Effects effects = EndDrag();
  effects.capture = Capture::kRelease;
  return effects;
}

Effects ListView::Lose() { return EndDrag(); }

Effects ListView::Leave() {
  const Rect former = HoverPlace();
  hoverRow = -1;
  hoverBar = Bar::kNone;
  return {.dirty = former};
}

Effects ListView::Wheel(int delta) {
  const int64_t notch =
      style_.notchLines > 0 ? int64_t{style_.notchLines} * Grid().pitch : int64_t{style_.notch};
  return ScrollTo(Sum(scrollY, -TakeTurn(wheelRest_, delta * notch)));
}

Effects ListView::Tilt(int delta) {
  return ScrollSidewaysTo(scrollX + TakeTurn(tiltRest_, int64_t{delta} * kSidewaysStep));
}

Effects ListView::Scroll(const ScrollEvent& event) {
  const RowGrid grid = Grid();
  const Bar kind = event.isVertical ? Bar::kVertical : Bar::kHorizontal;
  const ScrollState state = StateOf(grid, kind);
  const int64_t line = event.isVertical ? grid.pitch : kSidewaysStep;
  // The last line of a page is the first of the next.
  const auto offset =
      OffsetAfter(event.command, state, {line, std::max(state.page - line, line)}, event.position);
  if (!offset) return {};
  return event.isVertical ? ScrollTo(*offset) : ScrollSidewaysTo(*offset);
}

Effects ListView::Pan(const PanEvent& event) {
  const Point former = std::exchange(panPoint_, event.at);
  if (event.isFirst) return {};
  Effects effects = ScrollTo(Sum(scrollY, int64_t{former.y} - event.at.y));
  effects.Join(ScrollSidewaysTo(int64_t{scrollX} + former.x - event.at.x));
  return effects;
}

}  // namespace quilmark
