// How far a wheel, and a scrollbar of the system, move a list. Pixels.
#pragma once

#include <cstdint>
#include <optional>

#include "shell/view/native_control.h"
#include "shell/view/scrollbar.h"

namespace quilmark {

// What a wheel has turned short of a whole step, so that a touchpad's small turns add up.
struct WheelRest {
  int part = 0;  // below a notch's 120, with the sign of the turn
};

// Whole steps of a wheel whose notch is 120 of `turned`. The other way round begins anew.
int64_t TakeTurn(WheelRest& rest, int64_t turned);

// Pixels that a step of a scrollbar stands for: it counts in 32 bits.
int64_t PixelsOfBarStep(const ScrollState& state);

// What a scrollbar is told of a list.
BarRange RangeOfBar(int id, const ScrollState& state);

// Where a command leads, which may be outside of 0 to the limit. `line`, `page`: what such a command
// moves; `position`: that of the scrollbar, in its steps. Empty where nothing is to be moved.
struct ScrollSteps {
  int64_t line = 0, page = 0;
};
std::optional<int64_t> OffsetAfter(ScrollCommand command, const ScrollState& state,
                                   const ScrollSteps& steps, int64_t position);

}  // namespace quilmark
