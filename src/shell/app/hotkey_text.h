// How a hotkey reads: "Ctrl+Alt+Z".
#pragma once

#include <cstdint>
#include <string>

namespace quilmark {

// Names the key as the keyboard layout does; empty where it has no name.
using KeyNamer = std::u16string (*)(uint32_t key);

// Modifiers in the order Ctrl, Alt, Shift, Win. A letter or digit without a name stands for itself, any
// other key is "???".
std::u16string HotkeyDisplayText(uint32_t modifiers, uint32_t key, KeyNamer nameOf);

// The tip of the tray icon: the hotkey in the place of "{0}", or behind the text; at most 127 units.
std::u16string TrayTipText(std::u16string pattern, std::u16string_view hotkey);

}  // namespace quilmark
