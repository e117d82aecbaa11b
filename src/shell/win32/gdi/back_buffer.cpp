#include "shell/win32/gdi/back_buffer.h"

namespace quilmark {

void BackBuffer::Open(HWND window) {
  const WindowDc screen(window);
  dc_.Reset(CreateCompatibleDC(screen.Get()));
}

void BackBuffer::Resize(HWND window, int width, int height) {
  if (width <= 0 || height <= 0 || !dc_) return;
  const WindowDc screen(window);
  UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), width, height));
  if (!bitmap) return;
  const HGDIOBJ former = SelectObject(dc_.Get(), bitmap.Get());
  if (first_ == nullptr) first_ = former;
  bitmap_ = std::move(bitmap);  // the old one is released only now, no longer selected
}

void BackBuffer::Close() {
  if (dc_ && first_ != nullptr) SelectObject(dc_.Get(), first_);
  first_ = nullptr;
  bitmap_.Reset();
  dc_.Reset();
}

}  // namespace quilmark
