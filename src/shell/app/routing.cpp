#include "shell/app/routing.h"

#include <utility>

#include "platform/mul_div.h"
#include "shell/app/app_commands.h"
#include "shell/app/engine_messages.h"
#include "shell/app/window_timers.h"
#include "shell/search/rename.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

// The view that a number is for. Null where that view is not part of the program, or gets the number
// only while it is shown.
View* OwnerOf(AppState& app, const NumberRow& row) {
  const auto mode = static_cast<size_t>(row.owner);
  const bool isShown = mode == static_cast<size_t>(app.appMode);
  return isShown || row.when == When::kInEveryMode ? app.views[mode] : nullptr;
}

// The hidden views come first; their effects are dropped.
template <typename Hand>
Effects RouteToAll(AppState& app, Hand hand) {
  for (View* const view : app.views) {
    if (view != nullptr && view != &ShownView(app)) (void)hand(*view);
  }
  return hand(ShownView(app));
}

template <typename Hand>
Effects Route(AppState& app, const NumberRow& row, Hand hand) {
  if (row.owner == Owner::kEveryView) return RouteToAll(app, hand);
  View* const owner = OwnerOf(app, row);
  if (owner == nullptr) return {};
  Effects effects = hand(*owner);
  return owner == &ShownView(app) ? effects : Effects{.isTaken = effects.isTaken};
}

}  // namespace

Effects RouteTimer(AppState& app, const ViewContext& context, uint32_t id) {
  const NumberRow* const row = RowOfNumber(app.timerNumbers, id);
  if (row == nullptr) return {.isTaken = false};
  if (row->firing == Firing::kOnce) context.window.StopTimer(id);
  if (row->owner == Owner::kApp) return OnAppTimer(app, context, id);
  return Route(app, *row, [&](View& view) { return view.OnTimer(id, context); });
}

Effects RoutePosted(AppState& app, const ViewContext& context, const PostedMessage& message) {
  const NumberRow* const row = RowOfNumber(app.messageNumbers, message.message);
  if (row == nullptr) return {.isTaken = false};
  if (row->owner == Owner::kApp) return OnEngineMessage(app, context, message);
  return Route(app, *row, [&](View& view) { return view.OnPosted(message, context); });
}

Effects NotePaint(AppState& app, const ViewContext& context, const Rect& place,
                  const PaintOutcome& outcome) {
  if (app.search.icons != nullptr) app.search.icons->TrimGdiIfNeeded();
  return ShownView(app).NotePaint(place, outcome, context);
}

std::vector<ControlSpec> TakeControls(AppState& app, AppMode mode) {
  View* const view = app.views[static_cast<size_t>(mode)];
  if (view == nullptr) return {};
  std::vector<ControlSpec> specs = view->Controls();
  for (const ControlSpec& spec : specs) app.controlOwners[spec.id] = mode;
  return specs;
}

Effects RouteControl(AppState& app, const ViewContext& context, const ControlEvent& event) {
  const auto owner = app.controlOwners.find(event.id);
  const AppMode mode = owner == app.controlOwners.end() ? app.appMode : owner->second;
  return OfView(app, mode, app.views[static_cast<size_t>(mode)]->OnControl(event, context));
}

Effects RouteCommand(AppState& app, const ViewContext& context, uint16_t id) {
  const Effects effects = RunAppCommand(app, context, id);
  return effects.isTaken ? effects : ShownView(app).OnCommand(id, context);
}

Effects SwitchMode(AppState& app, const ViewContext& context, AppMode mode) {
  if (mode == app.appMode || app.views[static_cast<size_t>(mode)] == nullptr) return {};
  Effects effects = ShownView(app).Leave(context);
  app.appMode = mode;
  effects.Join({.relayout = true, .capture = Capture::kRelease, .dirty = context.client});
  return effects;
}

Effects CloseEditor(AppState& app, const ViewContext& context) {
  Effects effects = CancelRename(app.search, context);
  effects.tip = u"";
  return OfView(app, AppMode::kSearch, std::move(effects));
}

Effects OfView(const AppState& app, AppMode owner, Effects effects) {
  return owner == app.appMode ? std::move(effects) : Effects{.isTaken = effects.isTaken};
}

bool TakeScaleChange(AppState& app, WindowSettings& settings, uint32_t newDpi) {
  const uint32_t former = app.systemDpi == 0 ? 96 : app.systemDpi;
  const uint32_t wanted = newDpi == 0 ? 96 : newDpi;
  if (former == wanted) return false;
  for (int& width : settings.columnWidth) {
    width = MulDiv(width, static_cast<int>(wanted), static_cast<int>(former));
  }
  for (View* const view : app.views) {
    if (view != nullptr) view->Rescale(former, wanted);
  }
  app.systemDpi = wanted;
  if (IconCache* const icons = app.search.icons; icons != nullptr) {
    icons->Clear();
    icons->Prepare();
  }
  return true;
}

}  // namespace quilmark
