#include "shell/list/repaint_request.h"

#include <algorithm>
#include <utility>

#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint32_t kFrameMs = 16;

Effects RequestSoon(RepaintRequest& request, const ViewContext& context, const Rect& area,
                    bool isWaiting, uint32_t delayMs) {
  Effects effects;
  if (!isWaiting) request.askedMs = context.nowMs;
  // Each further request starts the timer anew: a wheel that turns on and on would show nothing.
  if (isWaiting && context.nowMs - request.askedMs >= std::max(delayMs, kFrameMs)) {
    request.askedMs = context.nowMs;
    const bool isOfPart = request.only.has_value();
    effects.dirty = TakeRepaint(request, area);
    request.isPending = true;
    if (isOfPart) request.only = Rect();  // what is asked for from now on
  }
  context.window.StartTimer(kTimerRepaint, delayMs);
  return effects;
}

}  // namespace

Effects RequestRepaint(RepaintRequest& request, const ViewContext& context, const Rect& area,
                       uint32_t delayMs) {
  request.only.reset();
  return RequestSoon(request, context, area, std::exchange(request.isPending, true), delayMs);
}

Effects RequestRepaintOf(RepaintRequest& request, const ViewContext& context, const Rect& area,
                         const Rect& part, uint32_t delayMs) {
  const bool isWaiting = std::exchange(request.isPending, true);
  if (!isWaiting) request.only = part;
  if (isWaiting && request.only) request.only = Union(*request.only, part);
  return RequestSoon(request, context, area, isWaiting, delayMs);
}

Rect TakeRepaint(RepaintRequest& request, const Rect& area) {
  const auto only = std::exchange(request.only, std::nullopt);
  if (!std::exchange(request.isPending, false)) return {};
  return only ? *only : area;
}

}  // namespace quilmark
