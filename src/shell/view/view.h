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

  // Lays everything out for the client area of the context, and says where its controls stand.
  virtual std::vector<ControlPlace> Layout(const ViewContext& context) = 0;

  // It was laid out a moment ago: the window has another size or scale, or shows it from now on.
  virtual Effects LaidOut(const ViewContext& context) = 0;

  // Another view is shown from now on.
  virtual Effects Leave(const ViewContext& context) = 0;

  // Turns all pixels that it remembers from the scale of one dpi to that of another.
  virtual void Rescale(uint32_t from, uint32_t to) = 0;

  // Covers every pixel that the canvas shows. Reads state and changes none.
  virtual PaintOutcome Paint(Canvas& canvas, const ViewContext& context) const = 0;

  // Paints a control that it asked to paint itself. The ground is that of the toolbar, the place is in
  // the coordinates of the control, and the context is the window's.
  virtual void PaintControl(Canvas& canvas, const ControlPicture& control,
                            const ViewContext& context) const = 0;

  // Hears that the place has been painted, and what could not be shown there yet.
  virtual Effects NotePaint(const Rect& place, const PaintOutcome& outcome,
                            const ViewContext& context) = 0;

  // Answers what the mouse does in the client area, or anywhere while it is captured.
  virtual Effects OnMouse(const MouseEvent& event, const ViewContext& context) = 0;

  // Hears that something else may stand under the mouse now. Empty: the mouse is over another window.
  virtual Effects Rehover(std::optional<Point> mouse, const ViewContext& context) = 0;

  // Answers a finger that moves over the content.
  virtual Effects OnPan(const PanEvent& event, const ViewContext& context) = 0;

  // True where a finger moves the content; elsewhere it acts as a mouse.
  virtual bool CanPan(Point at, const ViewContext& context) const = 0;

  // Answers a key.
  virtual Effects OnKey(const KeyEvent& event, const ViewContext& context) = 0;

  // Answers a command of commands.h: the choice of a menu, or what Effects::command asked for. The
  // answer may open windows of its own before it returns: no other state is held meanwhile.
  virtual Effects OnCommand(uint16_t id, const ViewContext& context) = 0;

  // Answers a command that a program or a script sends to a scrollbar.
  virtual Effects OnScroll(const ScrollEvent& event, const ViewContext& context) = 0;

  // Answers what one of its controls, or the editor of a name, reports.
  virtual Effects OnControl(const ControlEvent& event, const ViewContext& context) = 0;

  // Answers a timer that is its own, or every view's. One that fires once is stopped already.
  virtual Effects OnTimer(uint32_t id, const ViewContext& context) = 0;

  // Answers a message of background work that is its own. isTaken is false for a stale one.
  virtual Effects OnPosted(const PostedMessage& message, const ViewContext& context) = 0;

  // True where the mouse shows that an edge can be dragged.
  virtual bool HasSizeCursor(Point at, const ViewContext& context) const = 0;

  // What the hidden scrollbars are to hold.
  virtual std::vector<BarRange> Bars(const ViewContext& context) const = 0;

  // Where the status line stands; empty for a view that shows none.
  virtual Rect StatusPlace(const ViewContext& context) const = 0;

  // What has to be painted again when the window gets or loses the focus.
  virtual Rect ListArea(const ViewContext& context) const = 0;
};

}  // namespace quilmark
