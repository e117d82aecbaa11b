// Whether the icon stands in the notification area, as far as the shell's answers tell.
#pragma once

#include <functional>

#include "shell/view/window_port.h"

namespace quilmark {

// What the shell is asked: NIM_ADD or NIM_MODIFY.
enum class TrayCall { kAdd, kModify };

// Puts the icon there, or gives its tip to one that is there. `call` asks the shell, and gives false
// where the shell refuses. `isAdded` is what is believed of the icon.
TrayIconState PutTrayIcon(bool isAdded, const std::function<bool(TrayCall)>& call);

}  // namespace quilmark
