#include "canvas/icon_image.h"

#include <algorithm>

#include "platform/mul_div.h"

namespace quilmark {

PictureSize ShrunkInto(const PictureSize& picture, int side) {
  const int longest = std::max(picture.width, picture.height);
  if (longest <= side) return picture;
  return {std::max(MulDiv(picture.width, side, longest), 1),
          std::max(MulDiv(picture.height, side, longest), 1)};
}

Rect IconImage::PlaceIn(const Rect& room) const {
  const bool isWide = width_ >= height_;
  const int side = std::max(std::min(Width(room), Height(room)), 1);
  const int width = isWide ? side : std::max(MulDiv(side, width_, height_), 1);
  const int height = isWide ? std::max(MulDiv(side, height_, width_), 1) : side;
  const int left = room.left + (Width(room) - width) / 2, top = room.top + (Height(room) - height) / 2;
  return {left, top, left + width, top + height};
}

}  // namespace quilmark
