#include "window/png.h"

#include <objidl.h>

#include <gdiplus.h>

#include "shell/win32/gdi/gdi.h"

namespace quilmark {

namespace {

constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};

RECT PlaceOf(HWND window) {
  RECT rect = {0, 0, GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
  if (window != nullptr) GetWindowRect(window, &rect);
  return rect;
}

bool SaveBitmap(HBITMAP bitmap, const std::wstring& path) {
  ULONG_PTR token = 0;
  const Gdiplus::GdiplusStartupInput input;
  if (Gdiplus::GdiplusStartup(&token, &input, nullptr) != Gdiplus::Ok) return false;
  bool isSaved = false;
  {
    Gdiplus::Bitmap picture(bitmap, nullptr);
    isSaved = picture.Save(path.c_str(), &kPngEncoder, nullptr) == Gdiplus::Ok;
  }
  Gdiplus::GdiplusShutdown(token);
  return isSaved;
}

}  // namespace

bool SaveScreenAsPng(HWND window, const std::wstring& path) {
  const RECT rect = PlaceOf(window);
  const int width = rect.right - rect.left, height = rect.bottom - rect.top;
  const WindowDc screen(nullptr);
  const UniqueMemoryDc memory(CreateCompatibleDC(screen.Get()));
  const UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), width, height));
  if (!memory || !bitmap) return false;
  {
    const SelectScope selected(memory.Get(), bitmap.Get());
    BitBlt(memory.Get(), 0, 0, width, height, screen.Get(), rect.left, rect.top, SRCCOPY);
  }
  return SaveBitmap(bitmap.Get(), path);
}

}  // namespace quilmark
