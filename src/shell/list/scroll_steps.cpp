#include "shell/list/scroll_steps.h"

#include <algorithm>
#include <limits>

namespace quilmark {

int64_t TakeTurn(WheelRest& rest, int64_t turned) {
  constexpr int kNotch = 120;
  if ((rest.part < 0) != (turned < 0)) rest.part = 0;
  const int64_t all = rest.part + turned;
  rest.part = static_cast<int>(all % kNotch);
  return all / kNotch;
}

int64_t PixelsOfBarStep(const ScrollState& state) {
  int64_t step = 1;
  while ((state.limit + state.page) / step > std::numeric_limits<int32_t>::max()) step *= 2;
  return step;
}

BarRange RangeOfBar(int id, const ScrollState& state) {
  const int64_t step = PixelsOfBarStep(state);
  return {.id = id,
          .last = static_cast<int>((state.limit + state.page) / step) - 1,
          .page = static_cast<int>(state.page / step),
          .position = static_cast<int>(state.offset / step)};
}

std::optional<int64_t> OffsetAfter(ScrollCommand command, const ScrollState& state,
                                   const ScrollSteps& steps, int64_t position) {
  switch (command) {
    case ScrollCommand::kLineBack:
      return state.offset - steps.line;
    case ScrollCommand::kLineOn:
      return state.offset + steps.line;
    case ScrollCommand::kPageBack:
      return state.offset - steps.page;
    case ScrollCommand::kPageOn:
      return state.offset + steps.page;
    case ScrollCommand::kTo:
    case ScrollCommand::kTrackTo: {
      const int64_t step = PixelsOfBarStep(state);
      return std::clamp<int64_t>(position, 0, state.limit / step + 1) * step;
    }
    case ScrollCommand::kBegin:
      return 0;
    case ScrollCommand::kEnd:
      return state.limit;
    case ScrollCommand::kDone:
      break;
  }
  return std::nullopt;
}

}  // namespace quilmark
