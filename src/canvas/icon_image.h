// A picture that stands beside a name.
#pragma once

#include <memory>

#include "canvas/rect.h"

namespace quilmark {

// Pixels from edge to edge.
struct PictureSize {
  int width = 0, height = 0;

  bool operator==(const PictureSize&) const = default;
};

// The size of a picture in a box with sides of `side` pixels: its own where it is not larger, else by
// the smaller of both ratios, each at least 1.
PictureSize ShrunkInto(const PictureSize& picture, int side);

// What a canvas draws as an icon: a handle of the system, owned. Never changes. Shared, since a job may
// drop one from a cache while it is drawn. Any thread.
class IconImage {
 public:
  // Only the ratio of the two counts; both at least 1.
  explicit IconImage(int width = 1, int height = 1) : width_(width), height_(height) {}
  virtual ~IconImage() = default;
  IconImage(const IconImage&) = delete;
  IconImage& operator=(const IconImage&) = delete;

  // The largest place of its ratio in the middle of `room`; at least one pixel wide and high.
  Rect PlaceIn(const Rect& room) const;

 private:
  int width_, height_;
};

// Null where there is no icon.
using IconRef = std::shared_ptr<const IconImage>;

}  // namespace quilmark
