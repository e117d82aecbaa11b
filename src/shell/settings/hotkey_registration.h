// Which hotkeys the system holds for the program. Interface thread.
#pragma once

#include "shell/settings/hotkey_port.h"

namespace quilmark {

// Whether a new hotkey goes into the settings file.
enum class SaveHotkey : uint8_t { kNo, kYes };

// Takes the combination for the hotkey in the place of the former one. False, and the former one
// registered again, where it is the other hotkey's or the system refuses it. On success it is in
// `hotkeys`, and the tip of the tray icon names it if it shows and hides the window.
[[nodiscard]] bool RegisterHotkeyOf(HotkeyConfig& hotkeys, HotkeyPort& port, HotkeyKind which,
                                    Hotkey wanted, SaveHotkey save);

// RegisterHotkeyOf for the hotkey that shows and hides the window.
[[nodiscard]] bool RegisterShowHotkey(HotkeyConfig& hotkeys, HotkeyPort& port, Hotkey wanted,
                                      SaveHotkey save);

// Asks for the other hotkey as the settings have it. One that somebody has is done without.
void RegisterForegroundHotkey(const HotkeyConfig& hotkeys, HotkeyPort& port);

}  // namespace quilmark
