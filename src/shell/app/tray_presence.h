// Whether the icon stands in the notification area, as far as the shell's answers tell.
#pragma once

#include <functional>

#include "shell/view/window_port.h"

namespace quilmark {

// NIM_ADD and NIM_MODIFY.
enum class TrayCall { kAdd, kModify };

// Puts the icon there, or gives one that is there its tip; `call` asks the shell and says whether it
// took it.
TrayIconState PutTrayIcon(bool isAdded, const std::function<bool(TrayCall)>& call);

}  // namespace quilmark
