// Whether the icon stands in the notification area, as far as the shell's answers tell.
#pragma once

#include <functional>

namespace quilmark {

// NIM_ADD and NIM_MODIFY.
enum class TrayCall { kAdd, kModify };

// Puts the icon there, or gives one that is there its tip; `call` asks the shell and says whether it
// took it. True if the icon is there afterwards, whatever was believed of it before.
bool PutTrayIcon(bool isAdded, const std::function<bool(TrayCall)>& call);

}  // namespace quilmark
