// One of the things that the window shows: search, analysis, duplicates.
//
// A view decides where things stand and what an event does, and it paints. It never calls the system:
// what it wants done comes back as Effects, or is asked of the WindowPort of its context.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "canvas/canvas.h"
#include "platform/window_post.h"
#include "shell/view/effects.h"
#include "shell/view/native_control.h"
#include "shell/view/view_context.h"

namespace quilmark {

// All calls on the interface thread. A message, a timer or a job of the view reaches it also while
// another is shown: then its effects are dropped, and it lays itself out when it is entered.
class View {
 public:
  virtual ~View() = default;

  // The controls that it needs, in the order in which Tab goes through them. Asked once, at the start.
  virtual std::vector<ControlSpec> Controls() = 0;
  // Lays everything out, and says where its controls stand.
  virtual std::vector<ControlPlace> Layout(const ViewContext& context) = 0;
  // It was laid out a moment ago: the window has another size or scale, or shows it from now on.
  virtual Effects LaidOut(const ViewContext& context) = 0;
  virtual Effects Leave(const ViewContext& context) = 0;  // another is shown from now on
  virtual void Rescale(uint32_t from, uint32_t to) = 0;   // of all pixels that it remembers

  // Covers every pixel that the canvas shows.
  virtual PaintOutcome Paint(Canvas& canvas, const ViewContext& context) const = 0;
  // On the ground of the toolbar; its place is in the coordinates of the control, the context is the
  // window's.
  virtual void PaintControl(Canvas& canvas, const ControlPicture& control,
                            const ViewContext& context) const = 0;
  // The place has been painted with that outcome.
  virtual Effects NotePaint(const Rect& place, const PaintOutcome& outcome,
                            const ViewContext& context) = 0;

  virtual Effects OnMouse(const MouseEvent& event, const ViewContext& context) = 0;
  // What stands under the mouse may be another; empty: it is over another window.
  virtual Effects Rehover(std::optional<Point> mouse, const ViewContext& context) = 0;
  virtual Effects OnPan(const PanEvent& event, const ViewContext& context) = 0;
  virtual bool CanPan(Point at, const ViewContext& context) const = 0;
  virtual Effects OnKey(uint32_t key, bool ctrl, const ViewContext& context) = 0;  // a virtual key code
  virtual Effects OnScroll(const ScrollEvent& event, const ViewContext& context) = 0;
  virtual Effects OnControl(const ControlEvent& event, const ViewContext& context) = 0;
  virtual Effects OnTimer(uint32_t id, const ViewContext& context) = 0;
  virtual Effects OnPosted(const PostedMessage& message, const ViewContext& context) = 0;

  virtual bool HasSizeCursor(Point at, const ViewContext& context) const = 0;
  virtual std::vector<BarRange> Bars(const ViewContext& context) const = 0;  // of the hidden scrollbars
  virtual Rect StatusPlace(const ViewContext& context) const = 0;            // empty: it shows no status
  virtual Rect ListArea(
      const ViewContext& context) const = 0;  // what a change of the focus concerns too
};

}  // namespace quilmark
