// What a view needs to know of its window while it answers one call.
#pragma once

#include <cstdint>
#include <string_view>

#include "canvas/rect.h"
#include "canvas/scale.h"
#include "canvas/text_measure.h"
#include "config/palette.h"
#include "shell/view/window_port.h"

namespace quilmark {

// Made for each call; what it refers to lives until the call returns, and no longer.
struct ViewContext {
  uint32_t dpi = 96;
  Rect client;
  const Palette& palette;
  const TextMeasure& fonts;
  WindowPort& window;
  std::u16string_view status;  // the line that SetStatus has set
  bool hasFocus = false;       // keys go to the window itself, and not to one of its controls
  bool isTipShown = false;
  Point dragStep = {4, 4};  // pixels that the mouse moves before a press becomes a drag
  uint64_t nowMs = 0;

  // Pixels of this window for `n` pixels at 96 dpi.
  int Scaled(int n) const { return ScaleFor(dpi, n); }
};

// What a paint could not show yet.
struct PaintOutcome {
  bool isMissing = false;         // of a row in view something is not known that can be asked for
  bool isPictureMissing = false;  // a thumbnail in view can be asked for
  bool isLater = false;           // a row in view could not be read now: to be painted again in a while

  // Adds what another part of the same paint could not show.
  void Join(const PaintOutcome& other) {
    isMissing = isMissing || other.isMissing;
    isPictureMissing = isPictureMissing || other.isPictureMissing;
    isLater = isLater || other.isLater;
  }
};

}  // namespace quilmark
