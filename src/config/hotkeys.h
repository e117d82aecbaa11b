// hotkey.ini: the two global hotkeys.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quilmark {

// Modifier bits of RegisterHotKey (Alt 1, Ctrl 2, Shift 4, Win 8) and virtual key codes.
struct HotkeyConfig {
  uint32_t showModifiers = 1;  // shows and hides the window: Alt+Z
  uint32_t showKey = 90;
  uint32_t foregroundModifiers = 6;  // shows the foreground program's file: Ctrl+Shift+O
  uint32_t foregroundKey = 79;

  bool operator==(const HotkeyConfig&) const = default;
};

// The modifiers that RegisterHotKey is given for those that are kept: a key that is held counts once
// (MOD_NOREPEAT).
constexpr uint32_t ModifiersToRegister(uint32_t kept) { return kept | 0x4000; }

// The hotkeys of a file's text; a key that is missing keeps its default.
HotkeyConfig ReadHotkeys(std::u16string_view text);

// The text of the file for `hotkeys`: what ReadHotkeys reads back.
std::u16string HotkeysText(const HotkeyConfig& hotkeys);

// The hotkeys of the file in the configuration directory; the defaults without a file.
HotkeyConfig LoadHotkeys();

// Writes that file. A save that fails is lost: the hotkeys in force stay as they are.
void SaveHotkeys(const HotkeyConfig& hotkeys);

}  // namespace quilmark
