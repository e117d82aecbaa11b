// Screens of the window opened and closed many times, within the program: nothing of that needs a mouse.
#pragma once

#include <cstdint>

#include "shell/win32/window/main_window.h"

namespace quilmark {

enum class Screen : uint32_t {
  kViews,     // list, small icons, large icons, each painted
  kSidebar,   // filters at the side, and back
  kThemes,    // the other one
  kEditor,    // over a name, closed without a rename
  kDropList,  // of a preset box
  kCalendar,  // of a date
  kTip,       // beside the mouse
  kHidden,    // and shown again
  kScales,    // of a screen of 150 % or of 100 %, the other one
  kCount,
};

// Opens and closes it `times` times.
void Cycle(AppState& app, MainWindow& window, Screen screen, uint32_t times);

}  // namespace quilmark
