// Drawing as an interface: what is shown is decided and painted where no window is needed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "canvas/fonts.h"
#include "canvas/rect.h"
#include "config/palette.h"

namespace quilmark {

enum class Align : uint8_t { kLeft, kCentre, kRight };

// What an ellipsis stands for where a line does not fit.
enum class Cut : uint8_t {
  kEnd,
  kPath,  // folders within a path, so that its last part is seen
};

struct TextStyle {
  FontRole font = FontRole::kList;
  Color color = 0;
  Align align = Align::kLeft;
  Cut cut = Cut::kEnd;
};

struct TextRange {
  size_t begin = 0, length = 0;  // UTF-16 units

  bool operator==(const TextRange&) const = default;
};

// Parts of a text that stand out.
struct Marks {
  std::span<const TextRange> ranges;
  Color ground = 0, text = 0;
};

// Made for one drawing. Pixels; every colour is opaque.
class Canvas {
 public:
  virtual ~Canvas() = default;

  virtual void Fill(const Rect& rect, Color color) = 0;
  virtual void FillRound(const Rect& rect, int radius, Color color) = 0;
  // A line of one pixel just inside the rectangle.
  virtual void Outline(const Rect& rect, Color color) = 0;
  virtual void OutlineRound(const Rect& rect, int radius, Color color) = 0;
  virtual void FillPolygon(std::span<const Point> points, Color color) = 0;

  // One line, vertically centred, with an ellipsis where it does not fit. Marks: of a line that begins
  // at the left and is cut at its end.
  virtual void Text(const Rect& rect, std::u16string_view text, const TextStyle& style,
                    const Marks& marks = {}) = 0;

  // Keeps drawing within a place, and within those before it, until it is popped.
  virtual void PushClip(const Rect& rect) = 0;
  virtual void PopClip() = 0;

  // The place that drawing is kept within: what lies outside need not be drawn.
  virtual Rect Shown() const = 0;
};

// A clip for its own lifetime.
class CanvasClip {
 public:
  CanvasClip(Canvas& canvas, const Rect& rect) : canvas_(canvas) { canvas_.PushClip(rect); }
  ~CanvasClip() { canvas_.PopClip(); }
  CanvasClip(const CanvasClip&) = delete;
  CanvasClip& operator=(const CanvasClip&) = delete;

 private:
  Canvas& canvas_;
};

}  // namespace quilmark
