// The canvas on a device context, in the fonts of the window.
#pragma once

#include <array>

#include "canvas/canvas.h"
#include "canvas/line_marks.h"
#include "shell/win32/gdi/gdi.h"
#include "shell/win32/gdi/gdi_fonts.h"

namespace quilmark {

// Draws on `dc`, and leaves it as it was but for its colours. The device context and the fonts outlive
// it.
class GdiCanvas : public Canvas {
 public:
  // `shown` is the part of the device context that is seen: what lies outside need not be drawn.
  GdiCanvas(HDC dc, const GdiFonts& fonts, const Rect& shown);
  ~GdiCanvas() override;
  GdiCanvas(const GdiCanvas&) = delete;
  GdiCanvas& operator=(const GdiCanvas&) = delete;

  void Fill(const Rect& rect, Color color) override;
  void FillRound(const Rect& rect, int radius, Color color) override;
  void Outline(const Rect& rect, Color color) override;
  void OutlineRound(const Rect& rect, int radius, Color color) override;
  void FillPolygon(std::span<const Point> points, Color color) override;
  void Text(const Rect& rect, std::u16string_view text, const TextStyle& style,
            const Marks& marks) override;
  void Icon(const Rect& rect, const IconImage& icon) override;
  void PushClip(const Rect& rect) override;
  void PopClip() override;
  Rect Shown() const override { return shown_; }

 private:
  struct Clip {
    int saved = 0;
    Rect shown;
    FontRole font = FontRole::kMain;
  };
  void Select(FontRole font);
  bool ShowsNothingOf(const Rect& rect) const;
  void Line(const Rect& rect, std::u16string_view text, const TextStyle& style) const;
  void MarkedLine(const Rect& rect, std::u16string_view text, const TextStyle& style,
                  const Marks& marks);
  void MixedText(const Rect& rect, std::u16string_view text, const TextStyle& style, const Marks& marks);
  template <typename SpanOf, typename DrawIt>
  void DrawMarked(const Rect& rect, size_t spans, SpanOf spanOf, const TextStyle& style,
                  const Marks& marks, DrawIt draw);

  HDC dc_;
  const GdiFonts& fonts_;
  Rect shown_;
  FontRole font_ = FontRole::kMain;
  HGDIOBJ firstFont_;
  static constexpr size_t kMostClips = 16;
  std::array<Clip, kMostClips> clips_;
  size_t depth_ = 0;
};

}  // namespace quilmark
