// The bitmap that the window is painted into before it is shown.
#pragma once

#include "shell/win32/gdi/gdi.h"

namespace quilmark {

class BackBuffer {
 public:
  // Memory for the pixels comes with the first Resize.
  void Open(HWND window);
  // Keeps the former bitmap where no new one can be had; a size of 0 changes nothing.
  void Resize(HWND window, int width, int height);
  void Close();

  HDC Dc() const { return dc_.Get(); }
  bool IsReady() const { return static_cast<bool>(bitmap_); }

 private:
  UniqueMemoryDc dc_;
  UniqueBitmap bitmap_;
  HGDIOBJ first_ = nullptr;  // what the context held at its making
};

}  // namespace quilmark
