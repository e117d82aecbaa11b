// Where the parts of the window that chooses file types stand.
#pragma once

#include <cstdint>

#include "canvas/rect.h"

namespace quilmark {

// The outer size of the window, in pixels at 96 dpi.
inline constexpr int kPickerWidth = 400, kPickerHeight = 520;

// Places in the client area, in pixels.
struct PickerPlaces {
  Rect hint, list, label, field, add, remove, accept, all, invert, config, cancel;
};

// For a client area of any size; parts that have no room left are empty.
PickerPlaces PlacePicker(const Rect& client, uint32_t dpi);

}  // namespace quilmark
