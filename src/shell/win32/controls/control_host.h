// The window that controls of the system stand in, as they know it.
#pragma once

#include "canvas/canvas.h"
#include "shell/view/native_control.h"
#include "shell/view/view_context.h"
#include "shell/win32/gdi/gdi_fonts.h"

namespace quilmark {

// Outlives its controls. All calls on the interface thread. Where it is told of something it may place,
// fill and close controls, the teller too.
struct ControlHost {
  virtual ~ControlHost() = default;

  // Of the window itself: scale, palette, fonts.
  virtual ViewContext Context() const = 0;
  virtual const GdiFonts& Fonts() const = 0;  // those of the context, to be drawn with
  virtual bool IsDark() const = 0;            // so are scrollbars and frames of the system's popups

  // True if an Enter or an Escape was taken, and the edit does not see it. Of other events nobody asks.
  virtual bool OnControl(const ControlEvent& event) = 0;

  // On the ground of the toolbar. Its place is in the coordinates of the control.
  virtual void PaintControl(Canvas& canvas, const ControlPicture& control) const = 0;
};

}  // namespace quilmark
