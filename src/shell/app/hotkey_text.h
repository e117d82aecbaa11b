// How a hotkey reads: "Ctrl+Alt+Z".
#pragma once

#include <cstdint>
#include <string>

namespace quilmark {

// Names the key as the keyboard layout does; empty where it has no name.
using KeyNamer = std::u16string (*)(uint32_t key);

// The text of a hotkey: its modifiers in the order Ctrl, Alt, Shift, Win, then the key. `modifiers` are
// those of RegisterHotKey, `key` is a virtual key code. A letter or digit without a name stands for
// itself, any other key without one is "???".
std::u16string HotkeyDisplayText(uint32_t modifiers, uint32_t key, KeyNamer nameOf);

// The tip of the tray icon: the hotkey in the place of "{0}", or behind the text; at most 127 units.
std::u16string TrayTipText(std::u16string pattern, std::u16string_view hotkey);

}  // namespace quilmark
