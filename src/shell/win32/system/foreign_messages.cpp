#include "shell/win32/system/foreign_messages.h"

#include "platform/clock.h"
#include "shell/app/window_events.h"
#include "shell/view/window_ids.h"
#include "shell/win32/window/main_window.h"

namespace quilmark {

ForeignMessages OpenToOthers(HWND window) {
  const ForeignMessages foreign = {.taskbarCreated = RegisterWindowMessageW(L"TaskbarCreated"),
                                   .show = RegisterWindowMessageW(kShowMessage)};
  for (const UINT number : {foreign.taskbarCreated, foreign.show, UINT{kTrayCallback}}) {
    if (number != 0) ChangeWindowMessageFilterEx(window, number, MSGFLT_ALLOW, nullptr);
  }
  return foreign;
}

bool TakeForeignMessage(AppState& app, MainWindow& window, UINT number) {
  if (number == 0) return false;
  if (number == window.foreign.taskbarCreated) {
    OnTaskbarCreated(app, window, TickMs());
    return true;
  }
  if (number != window.foreign.show) return false;
  ShowAsAsked(app, window);
  return true;
}

}  // namespace quilmark
