// The icons of the system as a canvas draws them.
#pragma once

#include <utility>

#include "canvas/icon_image.h"
#include "shell/win32/gdi/gdi.h"

namespace quilmark {

// An icon of the system. The only kind of IconImage that a program with a GdiCanvas makes.
class GdiIcon final : public IconImage {
 public:
  // `icon` holds one; the sizes are those of its picture, in pixels.
  explicit GdiIcon(UniqueIcon icon, int width = 1, int height = 1)
      : IconImage(width, height), icon_(std::move(icon)) {}

  // Never null.
  HICON Handle() const { return icon_.Get(); }

 private:
  UniqueIcon icon_;
};

}  // namespace quilmark
