#include "shell/app/tray_presence.h"

namespace quilmark {

TrayIconState PutTrayIcon(bool isAdded, const std::function<bool(TrayCall)>& call) {
  // A shell that was started again has no icon that was added before.
  if (isAdded && call(TrayCall::kModify)) return TrayIconState::kStood;
  const bool wasAdded = call(TrayCall::kAdd);
  // Adding also fails where the icon is there already: a busy shell may take a call and answer too late.
  const bool takesTip = call(TrayCall::kModify);
  if (wasAdded) return TrayIconState::kPut;
  return takesTip ? TrayIconState::kStood : TrayIconState::kAbsent;
}

}  // namespace quilmark
