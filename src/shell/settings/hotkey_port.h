// What hotkeys and their capture ask of the system. The window of the system implements it; tests write
// down what was asked.
#pragma once

#include <cstdint>
#include <string>

#include "config/hotkeys.h"

namespace quilmark {

// Which of the two hotkeys.
enum class HotkeyKind : uint8_t {
  kShow = 0,        // shows and hides the window
  kForeground = 1,  // shows the foreground program's file
};

// A combination as the settings keep it: modifiers of RegisterHotKey and a virtual key code.
struct Hotkey {
  uint32_t modifiers = 0, key = 0;

  bool operator==(const Hotkey&) const = default;
};

// The combination that the settings hold.
constexpr Hotkey HotkeyOf(const HotkeyConfig& hotkeys, HotkeyKind which) {
  if (which == HotkeyKind::kShow) return {hotkeys.showModifiers, hotkeys.showKey};
  return {hotkeys.foregroundModifiers, hotkeys.foregroundKey};
}

// All calls on the interface thread.
struct HotkeyPort {
  virtual ~HotkeyPort() = default;

  // Asks the system for the combination under the number of the hotkey. False where somebody has it.
  [[nodiscard]] virtual bool RegisterHotkey(HotkeyKind which, Hotkey hotkey) = 0;

  // Gives it back; one that is not registered is passed over.
  virtual void UnregisterHotkey(HotkeyKind which) = 0;

  // How the combination reads with the present keyboard: "Ctrl+Alt+Z".
  virtual std::u16string HotkeyText(Hotkey hotkey) = 0;

  // Gives the icon in the notification area its tip anew, if it is there.
  virtual void UpdateTrayTip() = 0;

  // The text of the title bar.
  virtual std::u16string Title() = 0;

  // Lets the title bar blink for the user's attention.
  virtual void FlashTitle() = 0;

  // Gives the keys to the main window itself.
  virtual void FocusMainWindow() = 0;

  // Shows a note at the icon in the notification area; without the icon nothing is seen.
  virtual void ShowBalloon(const std::u16string& title, const std::u16string& text) = 0;

  // Shows a message box with the icon of information over the main window, and returns when it is
  // closed.
  virtual void TellInformation(const std::u16string& title, const std::u16string& text) = 0;

  // Sets what the hotkey's box of the Settings page shows. No effect while the page is not open.
  virtual void SetPageText(HotkeyKind which, const std::u16string& text) = 0;

  // Gives the keys to that box.
  virtual void FocusPageBox(HotkeyKind which) = 0;
};

}  // namespace quilmark
