// Waiting for the user to press a new hotkey. Interface thread.
#pragma once

#include <cstdint>
#include <string>

#include "shell/settings/hotkey_port.h"
#include "shell/view/window_port.h"

namespace quilmark {

// Which window waits.
enum class CaptureWindow : uint8_t { kMain, kSettingsPage };

// What is waited for. Ends by success, Escape, a new capture, or when the Settings page loses the focus.
struct HotkeyCapture {
  bool isActive = false;
  HotkeyKind which = HotkeyKind::kShow;
  CaptureWindow window = CaptureWindow::kMain;
  HotkeyKind hintPending = HotkeyKind::kShow;  // what the hint of kTimerCaptureHint is about
  std::u16string savedTitle;                   // of the main window, put back at the end
};

// A key that went down while a window of the program had the focus.
struct CaptureKey {
  uint32_t key = 0;        // virtual key code
  uint32_t modifiers = 0;  // held: Alt 1, Ctrl 2, Shift 4
  bool isRepeat = false;   // it is held down
  CaptureWindow from = CaptureWindow::kMain;
  bool isAway = false;  // of the Settings page: the focus has left the boxes of the hotkeys
};

// What a capture works on, for one call.
struct CaptureParts {
  HotkeyCapture& capture;
  HotkeyConfig& hotkeys;
  WindowPort& window;
  HotkeyPort& port;
};

// Waits for a new combination; a capture that runs ends before. The main window comes to the front with
// a hint for its title, the Settings page says so in the hotkey's box.
void BeginHotkeyCapture(const CaptureParts& parts, HotkeyKind which, CaptureWindow window);

// Ends a capture and puts the former title, or the page's text, back. No effect without one.
void EndHotkeyCapture(const CaptureParts& parts);

// The answer to kTimerCaptureHint: shows the hint at the tray icon too, if the capture goes on.
void ShowCaptureHint(const CaptureParts& parts);

// Answers a key in front of all else. True if it was taken, false for one that goes on, as every key
// does without a capture. May show a message box before it returns.
[[nodiscard]] bool TakeCaptureKey(const CaptureParts& parts, const CaptureKey& key);

}  // namespace quilmark
