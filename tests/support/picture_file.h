// Pictures for tests, as the bytes of a file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quilmark {

// A bitmap file of 24 bits a pixel; `colorAt` gives 0xRRGGBB of a pixel counted from the upper left.
inline std::string BitmapFile(int width, int height,
                              const std::function<uint32_t(int x, int y)>& colorAt) {
  constexpr uint32_t kHeaders = 54;
  const auto rowBytes = static_cast<uint32_t>((width * 3 + 3) / 4 * 4);
  const uint32_t pixelBytes = rowBytes * static_cast<uint32_t>(height);
  std::string file = "BM";
  const auto put = [&file](uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) file += static_cast<char>(value >> (8 * i));
  };
  put(kHeaders + pixelBytes, 4);
  put(0, 4);
  put(kHeaders, 4);
  put(40, 4);
  put(static_cast<uint32_t>(width), 4);
  put(static_cast<uint32_t>(height), 4);
  put(1, 2);
  put(24, 2);
  put(0, 4);
  put(pixelBytes, 4);
  for (int i = 0; i < 4; ++i) put(0, 4);
  for (int y = height - 1; y >= 0; --y) {
    for (int x = 0; x < width; ++x) put(colorAt(x, y), 3);
    put(0, static_cast<int>(rowBytes) - width * 3);
  }
  return file;
}

// One of a single colour.
inline std::string BitmapFile(int width, int height, uint32_t color) {
  return BitmapFile(width, height, [color](int, int) { return color; });
}

}  // namespace quilmark
