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

// A device context of a window, for its own lifetime.
class WindowDc {
 public:
  enum class Area { kClient, kWholeWindow };

  // Of the screen for a null `window`. Get() is null where the system has none left.
  explicit WindowDc(HWND window, Area area = Area::kClient)
      : window_(window), dc_(area == Area::kClient ? GetDC(window) : GetWindowDC(window)) {}
  ~WindowDc() {
    if (dc_ != nullptr) ReleaseDC(window_, dc_);
  }
  WindowDc(const WindowDc&) = delete;
  WindowDc& operator=(const WindowDc&) = delete;
  HDC Get() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
};

// The answer to WM_PAINT, for its own lifetime: what was to be painted counts as painted.
class PaintScope {
 public:
  explicit PaintScope(HWND window) : window_(window), dc_(BeginPaint(window, &paint_)) {}
  ~PaintScope() { EndPaint(window_, &paint_); }
  PaintScope(const PaintScope&) = delete;
  PaintScope& operator=(const PaintScope&) = delete;
  HDC Dc() const { return dc_; }
  const RECT& Place() const { return paint_.rcPaint; }  // pixels of the client area

 private:
  HWND window_;
  PAINTSTRUCT paint_ = {};
  HDC dc_;
};

// The same rectangle as the system has it.
inline RECT ToRECT(const Rect& rect) { return {rect.left, rect.top, rect.right, rect.bottom}; }
// The same rectangle as the canvas has it.
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
