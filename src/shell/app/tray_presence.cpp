#include "shell/app/tray_presence.h"

namespace quilmark {

TrayIconState PutTrayIcon(bool isAdded, const std::function<bool(TrayCall)>& call) {
  // A shell that was started again knows nothing of an icon that was added before.
  if (isAdded && call(TrayCall::kModify)) return TrayIconState::kStood;
  const bool wasAdded = call(TrayCall::kAdd);
  // Adding fails too where the icon is there already: a busy shell takes a call and answers too late.
  const bool takesTip = call(TrayCall::kModify);
  if (wasAdded) return TrayIconState::kPut;
  return takesTip ? TrayIconState::kStood : TrayIconState::kAbsent;
}

}  // namespace quilmark
