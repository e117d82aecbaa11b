// What happens to the window: closing, showing, hiding, drives. Interface thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "shell/app/app_state.h"
#include "shell/app/volume_notice.h"
#include "shell/view/window_port.h"

namespace quilmark {

// A close request, of whatever source: hides the window or destroys it.
void CloseWindowRequest(AppState& app, const ViewContext& context);

// The window goes away from the screen, not from memory.
void TrimAndHide(WindowPort& window);

// Brings the window up for the user, wherever it was; runs the first search if a hidden start left it.
void ShowMainWindow(AppState& app, WindowPort& window);

// The same from the notification area or for another copy of the program: makes sure of the icon too.
void ShowAsAsked(AppState& app, WindowPort& window);

// The show/hide hotkey.
void ToggleWindow(AppState& app, WindowPort& window);

// Activation and its loss: the search box has the focus of an active window; a window in the background
// trims itself after a while.
enum class Activation { kActivated, kDeactivated };
Effects OnActivation(AppState& app, const ViewContext& context, Activation activation);

// An entry of the notification area's menu; 0 is none.
void OnTrayChoice(AppState& app, WindowPort& window, int choice);

// The client area has another size. Nothing is laid out in one without width or height.
Effects OnResized(AppState& app, const ViewContext& context, int width, int height);

// The shell of the system was started again: its notification area knows nothing of us. Any program may
// say so, as often as it likes: the icon is seen to once a second at most, and there is a line in the
// log only where it did not stand.
void OnTaskbarCreated(AppState& app, WindowPort& window, uint64_t nowMs);

// A drive notice. Events of WM_DEVICECHANGE (dbt.h); bit 0 of the mask is A:. Nothing without a volume.
enum class DriveEvent : uint32_t {
  kArrival = 32768,
  kQueryRemove = 32769,
  kRemovePending = 32771,
  kRemoveComplete = 32772,
};
void OnDriveEvent(AppState& app, const ViewContext& context, uint32_t event,
                  std::optional<uint32_t> unitMask);

// A notice about a volume whose device is open; `id` is that of its DeviceNotice. Comes back within the
// limit of a close: whoever asks for the volume waits for the answer.
void OnVolumeNotice(AppState& app, const ViewContext& context, VolumeNotice notice, uintptr_t id);

}  // namespace quilmark
