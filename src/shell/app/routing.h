// Which view an event is for. Interface thread.
//
// What the user does goes to the view that is shown. Timers and messages have an owner, which gets them
// in every mode or in its own alone, or are every view's; what it wants done to the window counts only
// while it is shown.
#pragma once

#include <vector>

#include "shell/app/app_state.h"

namespace quilmark {

// Hands a timer to its owner. isTaken is false for a number without an owner.
Effects RouteTimer(AppState& app, const ViewContext& context, uint32_t id);

// Hands a message of background work to its owner, likewise.
Effects RoutePosted(AppState& app, const ViewContext& context, const PostedMessage& message);

// Tells the shown view what was painted, and what could not be shown there yet. Icons go where the
// system runs short of objects.
Effects NotePaint(AppState& app, const ViewContext& context, const Rect& place,
                  const PaintOutcome& outcome);

// The controls that a view needs: what they report goes to it from now on, in every mode.
std::vector<ControlSpec> TakeControls(AppState& app, AppMode mode);

// Hands what a control reports to the view that asked for it; the shown view hears of a control that no
// view has asked for, such as the editor of a name.
Effects RouteControl(AppState& app, const ViewContext& context, const ControlEvent& event);

// Hands a command to whom it is for: the program for what concerns the window as a whole, else the shown
// view. A message loop may run before it returns.
Effects RouteCommand(AppState& app, const ViewContext& context, uint16_t id);

// Shows another view. Does nothing for the one that is shown, and for one that is not part of the
// program.
Effects SwitchMode(AppState& app, const ViewContext& context, AppMode mode);

// The effects that a view asks for while it is shown; while another is, none but isTaken.
Effects OfView(const AppState& app, AppMode owner, Effects effects);

// Closes the editor of a name, and the tip: before the fonts or the place below them change.
Effects CloseEditor(AppState& app, const ViewContext& context);

// Rescales what the views and the settings remember in pixels, and drops icons of the former scale.
// False, and nothing done, where the scale is what it was; 0 counts as 96 on both sides.
[[nodiscard]] bool TakeScaleChange(AppState& app, WindowSettings& settings, uint32_t newDpi);

// The same for the settings in force.
[[nodiscard]] inline bool TakeScaleChange(AppState& app, uint32_t newDpi) {
  return TakeScaleChange(app, CurrentWindowSettings, newDpi);
}

}  // namespace quilmark
