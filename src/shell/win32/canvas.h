// Drawing on a device context with colours of the palette. Makes no object of the graphics system that
// outlives a call.
#pragma once

#include <string>
#include <vector>

#include "shell/highlight.h"
#include "shell/list_colors.h"
#include "shell/win32/gdi.h"

namespace quilmark {

struct Canvas {
  HDC dc = nullptr;

  void Fill(const Rect& rect, Color color) const { FillWith(dc, ToRECT(rect), color); }
  void FillRound(const Rect& rect, int radius, Color color) const;
  void OutlineRound(const Rect& rect, int radius, Color color) const;
  // Without its upper right corner, and that corner folded over.
  void FillCut(const Rect& rect, int corner, Color color) const;
  void FillCorner(const Rect& rect, Color color) const;

  // One line in the selected font, vertically centred, with an ellipsis where it does not fit.
  void Line(const Rect& rect, const std::u16string& text, Color color) const;
  // The same, with some of its parts marked as hits.
  void MarkedLine(const Rect& rect, const std::u16string& text, const std::vector<TextRange>& hits,
                  const RowColors& colors) const;
  // As many lines as fit, centred, from the top, with some parts marked as hits.
  void MarkedLines(const Rect& rect, const std::u16string& text, const std::vector<TextRange>& hits,
                   const RowColors& colors) const;
  // One line in the middle of the place.
  void Middle(const Rect& rect, const std::u16string& text, Color color) const;

  int WidthOf(const char16_t* text, size_t length) const;

 private:
  int LineHeight() const;  // of the selected font, at least 1
  template <typename DrawIt>
  void DrawMarked(const Rect& rect, const std::vector<PixelSpan>& spans, const RowColors& colors,
                  DrawIt draw) const;
};

// Keeps drawing within a place for its own lifetime.
class ClipScope {
 public:
  ClipScope(HDC dc, const Rect& rect) : dc_(dc), saved_(SaveDC(dc)) {
    IntersectClipRect(dc, rect.left, rect.top, rect.right, rect.bottom);
  }
  ~ClipScope() { RestoreDC(dc_, saved_); }
  ClipScope(const ClipScope&) = delete;
  ClipScope& operator=(const ClipScope&) = delete;

 private:
  HDC dc_;
  int saved_;
};

}  // namespace quilmark
