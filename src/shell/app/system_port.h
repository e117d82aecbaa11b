// What the decisions of the window as a whole ask of the system, beside its window. The real one calls
// Windows; tests write down what was asked.
#pragma once

#include <string>

#include "shell/app/autostart.h"
#include "shell/settings/hotkey_port.h"

namespace quilmark {

// All calls on the interface thread.
struct SystemPort : HotkeyPort, AutostartPort {
  // Shows a page in the user's browser. A failure is not told.
  virtual void OpenAddress(const std::u16string& address) = 0;
};

}  // namespace quilmark
