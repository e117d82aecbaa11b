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

// Whole steps of a wheel whose notch is 120 of `turned`. What is short of a step stays in `rest`; a turn
// the other way begins anew.
int64_t TakeTurn(WheelRest& rest, int64_t turned);

// How many pixels a step of a scrollbar of the system stands for, which counts in 32 bits.
int64_t PixelsOfBarStep(const ScrollState& state);

// What the scrollbar `id` is to hold for a list in that state.
BarRange RangeOfBar(int id, const ScrollState& state);

// Pixels that a command by lines or by pages moves.
struct ScrollSteps {
  int64_t line = 0, page = 0;
};

// The offset to which a command leads, which may lie outside of 0 to the limit. `position` is that of
// the scrollbar, in its steps, and counts for kTo and kTrackTo. Empty where nothing is to be moved.
std::optional<int64_t> OffsetAfter(ScrollCommand command, const ScrollState& state,
                                   const ScrollSteps& steps, int64_t position);

}  // namespace quilmark
