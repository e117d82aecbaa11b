// Which view an event is for. Interface thread.
//
// What the user does goes to the view that is shown. Timers and messages have an owner, which gets them
// in every mode or in its own alone, or are every view's; what it wants done to the window counts only
// while it is shown.
#pragma once

#include <vector>

#include "shell/app/app_state.h"

namespace quilmark {

// Both: isTaken is false for a number that nobody owns.
Effects RouteTimer(AppState& app, const ViewContext& context, uint32_t id);
Effects RoutePosted(AppState& app, const ViewContext& context, const PostedMessage& message);

// The controls that a view needs: what they report goes to it from now on, in every mode.
std::vector<ControlSpec> TakeControls(AppState& app, AppMode mode);
// Of a control that no view has asked for, such as the editor of a name: the shown view hears of it.
Effects RouteControl(AppState& app, const ViewContext& context, const ControlEvent& event);

// Shows another view; the same one, and one that is not there, change nothing.
Effects SwitchMode(AppState& app, const ViewContext& context, AppMode mode);

// Drops what a view asks of the window while another is shown.
Effects OfView(const AppState& app, AppMode owner, Effects effects);

// Of a name, and the tip: before the fonts or the place below them change.
Effects CloseEditor(AppState& app, const ViewContext& context);

// Rescales what the views and the settings remember in pixels. False, and nothing done, where the scale
// is what it was; 0 counts as 96 on both sides.
bool TakeScaleChange(AppState& app, WindowSettings& settings, uint32_t newDpi);
inline bool TakeScaleChange(AppState& app, uint32_t newDpi) {
  return TakeScaleChange(app, CurrentWindowSettings, newDpi);
}

}  // namespace quilmark
