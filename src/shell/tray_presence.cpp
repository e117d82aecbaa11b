#include "shell/tray_presence.h"

namespace quilmark {

bool PutTrayIcon(bool isAdded, const std::function<bool(TrayCall)>& call) {
  // A shell that was started again knows nothing of an icon that was added before.
  if (isAdded && call(TrayCall::kModify)) return true;
  const bool wasAdded = call(TrayCall::kAdd);
  // Adding fails too where the icon is there already: a busy shell takes a call and answers too late.
  return call(TrayCall::kModify) || wasAdded;
}

}  // namespace quilmark
