// Places of the window on the screen. Pixels.
#pragma once

#include <algorithm>

namespace quilmark {

// A rectangle. `right` and `bottom` lie just outside of it; one that is inside out counts as empty.
struct Rect {
  int left = 0, top = 0, right = 0, bottom = 0;

  bool operator==(const Rect&) const = default;
};

// Pixels from edge to edge; negative where the rectangle is inside out.
constexpr int Width(const Rect& rect) { return rect.right - rect.left; }

// The same from top to bottom.
constexpr int Height(const Rect& rect) { return rect.bottom - rect.top; }

// True if it holds no pixel.
constexpr bool IsEmpty(const Rect& rect) { return rect.right <= rect.left || rect.bottom <= rect.top; }

// What both cover; without height or width where they have nothing in common, but never inside out.
constexpr Rect Intersection(const Rect& one, const Rect& other) {
  const int left = std::max(one.left, other.left), top = std::max(one.top, other.top);
  return {left, top, std::max(std::min(one.right, other.right), left),
          std::max(std::min(one.bottom, other.bottom), top)};
}

// The smallest that holds both; an empty one adds nothing.
constexpr Rect Union(const Rect& one, const Rect& other) {
  if (IsEmpty(one)) return other;
  if (IsEmpty(other)) return one;
  return {std::min(one.left, other.left), std::min(one.top, other.top), std::max(one.right, other.right),
          std::max(one.bottom, other.bottom)};
}

// A pixel of the client area or of the screen.
struct Point {
  int x = 0, y = 0;

  bool operator==(const Point&) const = default;
};

// True if the point lies inside the rectangle; its right and bottom edge do not.
constexpr bool Holds(const Rect& rect, Point point) {
  return point.x >= rect.left && point.x < rect.right && point.y >= rect.top && point.y < rect.bottom;
}

// Left and top of a window of this size in the middle of the area; negative where it is larger.
constexpr Point CentredIn(const Rect& area, int width, int height) {
  return {area.left + (area.right - area.left - width) / 2,
          area.top + (area.bottom - area.top - height) / 2};
}

// The same, but with its left and top edge inside the area.
constexpr Point PlaceWithin(const Rect& area, int width, int height) {
  const Point centre = CentredIn(area, width, height);
  return {std::max(centre.x, area.left), std::max(centre.y, area.top)};
}

}  // namespace quilmark
