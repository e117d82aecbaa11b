// Drawing as an interface: what is shown is decided and painted where no window is needed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "canvas/fonts.h"
#include "canvas/icon_image.h"
#include "canvas/rect.h"
#include "config/palette.h"

namespace quilmark {

// Where a line of text stands within its rectangle.
enum class Align : uint8_t { kLeft, kCentre, kRight };

// What an ellipsis stands for where a line does not fit.
enum class Cut : uint8_t {
  kEnd,
  kPath,  // folders within a path, so that its last part is seen
};

// How one line of text is drawn.
struct TextStyle {
  FontRole font = FontRole::kList;
  Color color = 0;
  Align align = Align::kLeft;
  Cut cut = Cut::kEnd;
};

// A part of a text, in UTF-16 units from its beginning.
struct TextRange {
  size_t begin = 0, length = 0;

  bool operator==(const TextRange&) const = default;
};

// Parts of a text that are drawn in colours of their own. `ranges` ascend, none over another, and are
// only read during the call.
struct Marks {
  std::span<const TextRange> ranges;
  Color ground = 0, text = 0;
};

// Made for one drawing, on one thread. Places are pixels, the right and the bottom edge of a rectangle
// lie outside of it, and every colour is opaque. Nothing fails: what cannot be drawn is left out.
class Canvas {
 public:
  virtual ~Canvas() = default;

  // Fills the rectangle; an empty one draws nothing.
  virtual void Fill(const Rect& rect, Color color) = 0;

  // The same with rounded corners; `radius` in pixels.
  virtual void FillRound(const Rect& rect, int radius, Color color) = 0;

  // A line of one pixel just inside the rectangle.
  virtual void Outline(const Rect& rect, Color color) = 0;

  // The same with rounded corners; `radius` in pixels.
  virtual void OutlineRound(const Rect& rect, int radius, Color color) = 0;

  // Fills what the points enclose, in their order; the last is joined with the first.
  virtual void FillPolygon(std::span<const Point> points, Color color) = 0;

  // Draws one line, vertically centred, with an ellipsis where it does not fit. Marks are drawn in a
  // line that begins at the left and is cut at its end, and in no other.
  virtual void Text(const Rect& rect, std::u16string_view text, const TextStyle& style,
                    const Marks& marks = {}) = 0;

  // Draws the icon over what is there, as large as the rectangle has room for and in its middle.
  virtual void Icon(const Rect& rect, const IconImage& icon) = 0;

  // Keeps drawing within a place, and within those before it, until it is popped.
  virtual void PushClip(const Rect& rect) = 0;

  // Takes back the latest PushClip. Each has one PopClip.
  virtual void PopClip() = 0;

  // The place that drawing is kept within: what lies outside need not be drawn.
  virtual Rect Shown() const = 0;
};

// Keeps drawing within a place for its own lifetime.
class CanvasClip {
 public:
  // `canvas` outlives it.
  CanvasClip(Canvas& canvas, const Rect& rect) : canvas_(canvas) { canvas_.PushClip(rect); }
  ~CanvasClip() { canvas_.PopClip(); }
  CanvasClip(const CanvasClip&) = delete;
  CanvasClip& operator=(const CanvasClip&) = delete;

 private:
  Canvas& canvas_;
};

}  // namespace quilmark
