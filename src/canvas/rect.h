// Places of the window on the screen. Pixels.
#pragma once

#include <algorithm>

namespace quilmark {

struct Rect {
  int left = 0, top = 0, right = 0, bottom = 0;

  bool operator==(const Rect&) const = default;
};

constexpr int Width(const Rect& rect) { return rect.right - rect.left; }
constexpr int Height(const Rect& rect) { return rect.bottom - rect.top; }

constexpr bool IsEmpty(const Rect& rect) { return rect.right <= rect.left || rect.bottom <= rect.top; }

// What both cover; without height or width where they have nothing in common.
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

struct Point {
  int x = 0, y = 0;

  bool operator==(const Point&) const = default;
};

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
