// What happens to the window: closing, showing, hiding, drives. Interface thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "shell/app/app_state.h"
#include "shell/app/volume_notice.h"
#include "shell/view/window_port.h"

namespace quilmark {

// Answers a close request of any source. Hides the window while its icon stands in the notification area
// and the index is ready, or after a hidden start; else, or if the end was asked for, destroys it.
void CloseWindowRequest(AppState& app, const ViewContext& context);

// Hides the window, and gives memory back to the system.
void TrimAndHide(WindowPort& window);

// Shows the window to the user, wherever it was. Runs the first search if a hidden start left it out.
void ShowMainWindow(AppState& app, WindowPort& window);

// The same for the notification area or another copy of the program: puts the icon there too if it is
// missing.
void ShowAsAsked(AppState& app, WindowPort& window);

// Answers the hotkey: hides the window that is in front, else shows it.
void ToggleWindow(AppState& app, WindowPort& window);

// Whether the window has become the active one, or is no longer.
enum class Activation { kActivated, kDeactivated };

// Gives the focus of an active window to the search box. A window in the background trims itself after a
// while.
Effects OnActivation(AppState& app, const ViewContext& context, Activation activation);

// The client area has another size. Nothing is laid out in one without width or height.
Effects OnResized(AppState& app, const ViewContext& context, int width, int height);

// The shell of the system was started again: its notification area knows nothing of us. Any program may
// say so, as often as it likes: the icon is seen to once a second at most, and there is a line in the
// log only where it did not stand.
void OnTaskbarCreated(AppState& app, WindowPort& window, uint64_t nowMs);

// What has become of a drive. The events of WM_DEVICECHANGE (dbt.h).
enum class DriveEvent : uint32_t {
  kArrival = 32768,
  kQueryRemove = 32769,
  kRemovePending = 32771,
  kRemoveComplete = 32772,
};

// Answers an event about drives. Bit 0 of the mask is A:. Does nothing without a mask, and for an event
// that is none of the above.
void OnDriveEvent(AppState& app, const ViewContext& context, uint32_t event,
                  std::optional<uint32_t> unitMask);

// A notice about a volume whose device is open; `id` is that of its DeviceNotice. Comes back within the
// limit of a close: whoever asks for the volume waits for the answer.
void OnVolumeNotice(AppState& app, const ViewContext& context, VolumeNotice notice, uintptr_t id);

}  // namespace quilmark
