// Canvases without a window: one writes down what is drawn, the other paints it.
#pragma once

#include <string>
#include <vector>

#include "canvas/canvas.h"
#include "canvas/text_measure.h"

namespace quilmark {

struct Drawn {
  enum Kind { kFill, kOutline, kText, kIcon } kind = kFill;
  Rect place;
  Rect shown;  // what of it the clip leaves
  Color color = 0;
  std::u16string text;  // of a text
  TextStyle style;
  std::vector<TextRange> marked;
  Color markGround = 0, markText = 0;
  const IconImage* icon = nullptr;  // of an icon; alive as long as the test has it so
};

// Keeps the clips; the shapes are the heirs'.
class ClippingCanvas : public Canvas {
 public:
  explicit ClippingCanvas(const Rect& shown) : clips_{shown} {}
  void PushClip(const Rect& rect) override { clips_.push_back(Intersection(clips_.back(), rect)); }
  void PopClip() override { clips_.pop_back(); }
  Rect Shown() const override { return clips_.back(); }
  bool IsBalanced() const { return clips_.size() == 1; }

 private:
  std::vector<Rect> clips_;
};

// Round shapes and polygons count as the rectangles around them.
class RecordingCanvas : public ClippingCanvas {
 public:
  using ClippingCanvas::ClippingCanvas;
  void Fill(const Rect& rect, Color color) override { Add(Drawn::kFill, rect, color); }
  void FillRound(const Rect& rect, int, Color color) override { Add(Drawn::kFill, rect, color); }
  void Outline(const Rect& rect, Color color) override { Add(Drawn::kOutline, rect, color); }
  void OutlineRound(const Rect& rect, int, Color color) override { Add(Drawn::kOutline, rect, color); }
  void FillPolygon(std::span<const Point> points, Color color) override;
  void Text(const Rect& rect, std::u16string_view text, const TextStyle& style,
            const Marks& marks) override;
  void Icon(const Rect& rect, const IconImage& icon) override;

  std::vector<Drawn> drawn;  // in their order; without what the clip leaves nothing of

 private:
  void Add(Drawn::Kind kind, const Rect& rect, Color color);
};

// Each character is a box in a colour of its own, and so is an icon.
class RasterCanvas : public ClippingCanvas {
 public:
  RasterCanvas(const Rect& shown, const TextMeasure& fonts) : ClippingCanvas(shown), fonts_(fonts) {}
  void Fill(const Rect& rect, Color color) override;
  void FillRound(const Rect& rect, int radius, Color color) override;
  void Outline(const Rect& rect, Color color) override;
  void OutlineRound(const Rect& rect, int, Color color) override { Outline(rect, color); }
  void FillPolygon(std::span<const Point> points, Color color) override;
  void Text(const Rect& rect, std::u16string_view text, const TextStyle& style,
            const Marks& marks) override;
  void Icon(const Rect& rect, const IconImage& icon) override;

  // Of a picture `width` pixels wide, made by whoever paints.
  std::vector<Color>* pixels = nullptr;
  int width = 0;

 private:
  const TextMeasure& fonts_;
};

// Where the letters of a text stand within its place.
Rect InkOf(const Drawn& text, const TextMeasure& fonts);

}  // namespace quilmark
