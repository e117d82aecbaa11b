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

// Where a row is painted.
struct RowPlace {
  Rect row;
  int shift = 0;  // pixels that the columns stand further left; the row's ground does not
  bool isHovered = false;
};

// What a list shows. Interface thread.
class ListSource {
 public:
  virtual ~ListSource() = default;

  // How many rows there are now; another call may give another number.
  virtual uint64_t Count() const = 0;

  // Reads what the next calls of PaintRow need of the rows from `first` to before `end`. Where there are
  // fewer by now, nothing is painted of those that are gone. No lock outlives the call.
  virtual PaintOutcome Read(uint64_t first, uint64_t end) = 0;

  // Paints a row that was read, on the ground that the view has painted. Drawing is kept within the rows
  // of the list.
  virtual PaintOutcome PaintRow(Canvas& canvas, uint64_t row, const RowPlace& place,
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

// Colours of a scrollbar.
struct BarColors {
  Color track = 0, thumb = 0, heldThumb = 0;
};

// The colours of bars that stand on `ground`.
BarColors BarColorsOn(const Palette& palette, Color ground);

// What a press of the mouse has hit.
struct [[nodiscard]] ListPress {
  Effects effects;
  int64_t row = -1;      // -1: beside the rows
  Bar bar = Bar::kNone;  // that took the press
};

// Interface thread. The fields may be set from outside; an offset that the rows do not reach shows
// nothing.
class ListView {
 public:
  // `source` outlives the list.
  ListView(ListSource& source, const ListStyle& style) : source_(source), style_(style) {}

  // The style as it was given, at 96 dpi.
  const ListStyle& Style() const { return style_; }

  // Shows the rows in another style, from the top. The list has to be placed anew before the next paint.
  void SetStyle(const ListStyle& style);

  // Puts the rows there and the offsets within their limits. To be called whenever the place, the width
  // of a row's columns (0: it has none), the scale or the number of rows has changed.
  void Place(const Rect& rows, int contentWidth, const ViewContext& context);

  // Keeps the same rows in view at another dpi. Places are of the former scale until Place is called.
  void Rescale(uint32_t from, uint32_t to);

  // Paints the rows and bars that the canvas shows. The ground of the rows is painted already.
  PaintOutcome Paint(Canvas& canvas, const ViewContext& context, const BarColors& colors) const;

  // The geometry of the moment, in pixels.
  RowGrid Grid() const;

  // What the rows and the bars cover.
  Rect Area() const;

  // The row under a point, or -1.
  int64_t RowAt(Point point) const;

  // Where a row stands; that may lie outside the list.
  Rect PlaceOf(uint64_t row) const;

  // The rows in view, where there are `rowCount`: for code that holds its own copy of them.
  RowSpan InView(uint64_t rowCount) const;

  // The bar under a point, or kNone.
  Bar BarAt(Point point) const;

  // What the hidden scrollbar `id` is to hold.
  BarRange RangeOf(Bar kind, int id) const;

  // In all answers below `dirty` is the part of the list that shows a change, and empty where none does.
  // Offsets are kept within their limits.

  // A press of the mouse, which may take hold of a thumb.
  ListPress Press(Point point);

  // Moves the thumb that is held, else the hover.
  Effects Move(Point point);

  // The button was let go: the thumb is not held any more, and the capture is given back.
  Effects Release();

  // The capture went to another window: the thumb is not held any more.
  Effects Lose();

  // The mouse has left the window: nothing is hovered.
  Effects Leave();

  // A wheel's turn: 120 a notch, positive away from the user. Parts of a step add up.
  Effects Wheel(int delta);

  // A wheel's tilt: 120 a notch, positive to the right.
  Effects Tilt(int delta);

  // A command to a scrollbar.
  Effects Scroll(const ScrollEvent& event);

  // Moves the rows so that they stay under the finger.
  Effects Pan(const PanEvent& event);

  // Sets the vertical offset, in pixels. The hover ends until the view is told where the mouse stands.
  Effects ScrollTo(int64_t y);

  // Sets the horizontal offset, in pixels.
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
