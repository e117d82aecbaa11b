// The bitmap that the window is painted into before it is shown.
#pragma once

#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// Interface thread.
class BackBuffer {
 public:
  // Makes the device context. Memory for the pixels comes with the first Resize.
  void Open(HWND window);

  // Makes a bitmap of that size in pixels, of undefined content. The former one stays where the system
  // gives none, and for a size of 0.
  void Resize(HWND window, int width, int height);

  // Frees both.
  void Close();

  // What is painted on; null before Open and after Close.
  HDC Dc() const { return dc_.Get(); }

  // True if there is a bitmap to paint into.
  bool IsReady() const { return static_cast<bool>(bitmap_); }

 private:
  UniqueMemoryDc dc_;
  UniqueBitmap bitmap_;
  HGDIOBJ first_ = nullptr;  // what the context held at its making
};

}  // namespace quilmark
