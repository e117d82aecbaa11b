// The window that controls of the system stand in, as they know it.
#pragma once

#include "canvas/canvas.h"
#include "shell/view/native_control.h"
#include "shell/view/view_context.h"
#include "shell/win32/gdi/gdi_fonts.h"

namespace quilmark {

// Outlives its controls. All calls on the interface thread. While it is told of something it may place,
// fill and close controls, also the one that tells it.
struct ControlHost {
  virtual ~ControlHost() = default;

  // The context of the window itself: scale, palette, fonts.
  virtual ViewContext Context() const = 0;

  // The fonts of that context, to be drawn with.
  virtual const GdiFonts& Fonts() const = 0;

  // True if scrollbars and frames of the system's popups are to be dark.
  virtual bool IsDark() const = 0;

  // Hears what a control reports. True if an Enter or an Escape was taken, so that the edit does not see
  // it; for other events the answer has no meaning.
  virtual bool OnControl(const ControlEvent& event) = 0;

  // Offers a key that went down in the search box, before the box has it. True if it was taken;
  // then the box gets no character of it either.
  virtual bool TakeKey(uint32_t, bool /*isRepeat*/) { return false; }

  // Paints a control that its view paints, on the ground of the toolbar. The place is in the coordinates
  // of the control.
  virtual void PaintControl(Canvas& canvas, const ControlPicture& control) const = 0;
};

}  // namespace quilmark
