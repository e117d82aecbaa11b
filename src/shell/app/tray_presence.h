// Whether the icon stands in the notification area, as far as the shell's answers tell.
#pragma once

#include <functional>

namespace quilmark {

// NIM_ADD and NIM_MODIFY.
enum class TrayCall { kAdd, kModify };

enum class TrayIconState {
  kAbsent,  // the shell took nothing
  kPut,     // it is there, and was not
  kStood,   // it was there, whatever was believed of it
};

// Puts the icon there, or gives one that is there its tip; `call` asks the shell and says whether it
// took it.
TrayIconState PutTrayIcon(bool isAdded, const std::function<bool(TrayCall)>& call);

}  // namespace quilmark
