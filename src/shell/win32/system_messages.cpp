#include "shell/win32/system_messages.h"

#include <dbt.h>

#include "shell/session_end.h"
#include "shell/window_events.h"

namespace quilmark {

namespace {

std::optional<uint32_t> UnitMaskOf(LPARAM payload) {
  const auto* const header = reinterpret_cast<const DEV_BROADCAST_HDR*>(payload);
  if (header == nullptr || header->dbch_devicetype != DBT_DEVTYP_VOLUME) return std::nullopt;
  return reinterpret_cast<const DEV_BROADCAST_VOLUME*>(header)->dbcv_unitmask;
}

}  // namespace

std::optional<LRESULT> OnDeviceChange(AppState& app, MainWindow& window, const Message& message) {
  const auto event = static_cast<uint32_t>(message.wParam);
  // Other events bring other payloads, or none.
  const bool isOurs = event == DBT_DEVICEARRIVAL || event == DBT_DEVICEQUERYREMOVE ||
                      event == DBT_DEVICEREMOVEPENDING || event == DBT_DEVICEREMOVECOMPLETE;
  if (isOurs) OnDriveEvent(app, window, event, UnitMaskOf(message.lParam));
  return 1;
}

// False: another program has kept the session.
std::optional<LRESULT> OnSessionEnd(AppState& app, MainWindow& window, const Message& message) {
  if (message.wParam != FALSE) SaveAtSessionEnd(app, window);
  return 0;
}

}  // namespace quilmark
