#include "shell/win32/system/foreign_messages.h"

#include "shell/view/window_ids.h"

namespace quilmark {

ForeignMessages OpenToOthers(HWND window) {
  const ForeignMessages foreign = {.taskbarCreated = RegisterWindowMessageW(L"TaskbarCreated"),
                                   .show = RegisterWindowMessageW(kShowMessage)};
  for (const UINT number : {foreign.taskbarCreated, foreign.show, UINT{kTrayCallback}}) {
    if (number != 0) ChangeWindowMessageFilterEx(window, number, MSGFLT_ALLOW, nullptr);
  }
  return foreign;
}

}  // namespace quilmark
