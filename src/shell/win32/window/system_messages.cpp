#include "shell/win32/window/system_messages.h"

#include <dbt.h>

#include <array>
#include <cstddef>

#include "shell/app/session_end.h"
#include "shell/app/window_events.h"

namespace quilmark {

namespace {

std::optional<uint32_t> UnitMaskOf(LPARAM payload) {
  const auto* const header = reinterpret_cast<const DEV_BROADCAST_HDR*>(payload);
  if (header == nullptr || header->dbch_devicetype != DBT_DEVTYP_VOLUME) return std::nullopt;
  return reinterpret_cast<const DEV_BROADCAST_VOLUME*>(header)->dbcv_unitmask;
}

EventGuid FieldsOf(const GUID& guid) {
  return {guid.Data1, guid.Data2, guid.Data3, std::to_array(guid.Data4)};
}

// Answers an event about a handle. The engine knows whether one of its volumes stands behind it.
void OnHandleEvent(AppState& app, MainWindow& window, uint32_t event, const DEV_BROADCAST_HANDLE& data) {
  // The message of any other event is too short to have this.
  const bool hasGuid = event == DBT_CUSTOMEVENT &&
                       data.dbch_size >= offsetof(DEV_BROADCAST_HANDLE, dbch_eventguid) + sizeof(GUID);
  const auto notice = VolumeNoticeOf(event, hasGuid ? FieldsOf(data.dbch_eventguid) : EventGuid{});
  const auto id = reinterpret_cast<uintptr_t>(data.dbch_hdevnotify);
  if (notice) OnVolumeNotice(app, window.Context(), *notice, id);
}

}  // namespace

std::optional<LRESULT> OnDeviceChange(AppState& app, MainWindow& window, const Message& message) {
  const auto event = static_cast<uint32_t>(message.wParam);
  constexpr uint32_t kHasPayload = 0x8000;
  const auto* const header = reinterpret_cast<const DEV_BROADCAST_HDR*>(message.lParam);
  if ((event & kHasPayload) != 0 && header != nullptr && header->dbch_devicetype == DBT_DEVTYP_HANDLE) {
    OnHandleEvent(app, window, event, *reinterpret_cast<const DEV_BROADCAST_HANDLE*>(header));
    return TRUE;
  }
  // Other events bring other payloads, or none.
  const bool isOurs = event == DBT_DEVICEARRIVAL || event == DBT_DEVICEQUERYREMOVE ||
                      event == DBT_DEVICEREMOVEPENDING || event == DBT_DEVICEREMOVECOMPLETE;
  if (isOurs) OnDriveEvent(app, window.Context(), event, UnitMaskOf(message.lParam));
  return 1;
}

// wParam is false where another program has kept the session from ending.
std::optional<LRESULT> OnSessionEnd(AppState& app, MainWindow& window, const Message& message) {
  if (message.wParam != FALSE) SaveAtSessionEnd(app, window);
  return 0;
}

}  // namespace quilmark
