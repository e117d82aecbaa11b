// A list that scrolls: rows of one height or icons, the row under the mouse, its two bars.
//
// The list knows places, and nothing of what stands there: its source paints the rows, and what is
// chosen belongs to the view. It asks for no timer and keeps no time: a view that holds paints back
// while its rows rush by drops `dirty` and the bars of an answer, and uses the offsets.
#pragma once

#include <cstdint>
#include <optional>

#include "canvas/canvas.h"
#include "config/palette.h"
#include "shell/list/row_grid.h"
#include "shell/list/scroll_steps.h"
#include "shell/view/effects.h"
#include "shell/view/native_control.h"
#include "shell/view/view_context.h"

namespace quilmark {

struct RowPlace {
  Rect row;
  int shift = 0;  // pixels that the columns stand further left; the row's ground does not
  bool isHovered = false;
};

// What a list shows. Interface thread.
class ListSource {
 public:
  virtual ~ListSource() = default;

  virtual uint64_t Count() const = 0;  // may be another with each call

  // Takes what the next calls of PaintRow need of the rows from `first` to before `end`. There may be
  // fewer by now: of a row that is gone nothing is painted. No lock outlives the call.
  virtual PaintOutcome Read(uint64_t first, uint64_t end) = 0;

  // Within the rows of the list, on the ground that the view has painted.
  virtual void PaintRow(Canvas& canvas, uint64_t row, const RowPlace& place,
                        const ViewContext& context) const = 0;
};

// Pixels at 96 dpi, but where it says otherwise.
struct ListStyle {
  int pitch = 44;      // of a line of rows
  int cell = 0;        // width of an icon; 0: one row a line
  int notch = 100;     // pixels that a notch of the wheel moves, whatever the scale
  int notchLines = 0;  // lines that it moves in their place; 0: pixels
  int bar = kBarWidth, leastThumb = kLeastThumb;
  int slack = 0;  // a vertical bar stands from more than so many pixels too much on, at any scale
  bool barTakesRoom = false;  // of the rows, where it stands; else it stands beside them
  bool trackDrags = false;    // a press beside the thumb holds it there; else it only jumps

  bool operator==(const ListStyle&) const = default;
};

struct BarColors {
  Color track = 0, thumb = 0, heldThumb = 0;
};
// Of bars on that ground.
BarColors BarColorsOn(const Palette& palette, Color ground);

struct ListPress {
  Effects effects;
  int64_t row = -1;      // -1: beside the rows
  Bar bar = Bar::kNone;  // that took the press
};

// Interface thread. Offsets and the rest may be set; an offset that the rows do not reach shows nothing.
class ListView {
 public:
  ListView(ListSource& source, const ListStyle& style) : source_(source), style_(style) {}

  const ListStyle& Style() const { return style_; }
  // From the top; placed anew before the next paint.
  void SetStyle(const ListStyle& style);
  // Puts the rows there and the offsets within their limits: whenever the place, the width of a row's
  // columns (0: it has none), the scale or the number of rows has changed.
  void Place(const Rect& rows, int contentWidth, const ViewContext& context);
  // The same rows stay in view. Places are of the former scale until it is placed.
  void Rescale(uint32_t from, uint32_t to);

  // The rows and bars that the canvas shows; the rows' ground is painted already.
  PaintOutcome Paint(Canvas& canvas, const ViewContext& context, const BarColors& colors) const;

  RowGrid Grid() const;  // of the moment
  Rect Area() const;     // of rows and bars
  int64_t RowAt(Point point) const;
  Rect PlaceOf(uint64_t row) const;         // may lie outside the list
  RowSpan InView(uint64_t rowCount) const;  // of so many rows, for whoever holds a copy of them
  Bar BarAt(Point point) const;
  BarRange RangeOf(Bar kind, int id) const;  // of the hidden scrollbar `id`

  // `dirty` is what of the list shows a change: empty where there is none.
  ListPress Press(Point point);
  Effects Move(Point point);  // moves the thumb that is held, else the hover
  Effects Release();
  Effects Lose();  // the capture
  Effects Leave();
  Effects Wheel(int delta);  // 120 a notch; away from the user is positive
  Effects Tilt(int delta);   // to the right is positive
  Effects Scroll(const ScrollEvent& event);
  Effects Pan(const PanEvent& event);  // the rows stay under the finger
  Effects ScrollTo(int64_t y);
  Effects ScrollSidewaysTo(int64_t x);

  int64_t scrollY = 0;
  int scrollX = 0;
  int64_t hoverRow = -1;
  Bar hoverBar = Bar::kNone, dragBar = Bar::kNone;  // under the mouse; held

 private:
  std::optional<Scrollbar> PlaceBar(const RowGrid& grid, Bar kind) const;
  ScrollState StateOf(const RowGrid& grid, Bar kind) const;
  Rect HoverPlace() const;
  Effects Scrolled() const;
  Effects MoveThumb(Bar kind, Point cursor);
  Effects EndDrag();

  ListSource& source_;
  ListStyle style_;
  Rect rows_;
  int contentWidth_ = 0;
  uint32_t dpi_ = 96;
  WheelRest wheelRest_, tiltRest_;
  Point panPoint_;
};

}  // namespace quilmark
