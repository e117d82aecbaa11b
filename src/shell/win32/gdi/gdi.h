// Owners of objects of the graphics system.
#pragma once

#include <windows.h>

#include "canvas/rect.h"
#include "config/palette.h"
#include "platform/win32/unique.h"

namespace quilmark {

template <typename Handle>
struct GdiTraits {
  using Value = Handle;
  static Value Empty() { return nullptr; }
  static void Close(Value object) { DeleteObject(object); }
};
using UniqueFont = Unique<GdiTraits<HFONT>>;
using UniqueBrush = Unique<GdiTraits<HBRUSH>>;
using UniquePen = Unique<GdiTraits<HPEN>>;
using UniqueBitmap = Unique<GdiTraits<HBITMAP>>;
using UniqueRegion = Unique<GdiTraits<HRGN>>;

struct MemoryDcTraits {
  using Value = HDC;
  static Value Empty() { return nullptr; }
  static void Close(Value dc) { DeleteDC(dc); }
};
using UniqueMemoryDc = Unique<MemoryDcTraits>;

struct IconTraits {
  using Value = HICON;
  static Value Empty() { return nullptr; }
  static void Close(Value icon) { DestroyIcon(icon); }
};
using UniqueIcon = Unique<IconTraits>;

// Selects an object for its own lifetime.
class SelectScope {
 public:
  SelectScope(HDC dc, HGDIOBJ object) : dc_(dc), former_(SelectObject(dc, object)) {}
  ~SelectScope() { SelectObject(dc_, former_); }
  SelectScope(const SelectScope&) = delete;
  SelectScope& operator=(const SelectScope&) = delete;

 private:
  HDC dc_;
  HGDIOBJ former_;
};

// The client area's device context of a window, for its own lifetime.
class WindowDc {
 public:
  explicit WindowDc(HWND window) : window_(window), dc_(GetDC(window)) {}
  ~WindowDc() { ReleaseDC(window_, dc_); }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  HDC Get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

inline RECT ToRECT(const Rect& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }
inline Rect FromRECT(const RECT& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }

// Without a brush of its own: the stock one takes the colour.
inline void FillWith(HDC dc, const RECT& rect, Color color) {
  SetDCBrushColor(dc, color);
  FillRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

// A line of one pixel just inside the rectangle.
inline void FrameWith(HDC dc, const RECT& rect, Color color) {
  SetDCBrushColor(dc, color);
  FrameRect(dc, &rect, static_cast<HBRUSH>(GetStockObject(DC_BRUSH)));
}

}  // namespace quilmark
