#include "shell/settings/hotkey_registration.h"

namespace quilmark {

namespace {

constexpr HotkeyKind Other(HotkeyKind which) {
  return which == HotkeyKind::kShow ? HotkeyKind::kForeground : HotkeyKind::kShow;
}

void Store(HotkeyConfig& hotkeys, HotkeyKind which, Hotkey hotkey) {
  const bool isShow = which == HotkeyKind::kShow;
  (isShow ? hotkeys.showModifiers : hotkeys.foregroundModifiers) = hotkey.modifiers;
  (isShow ? hotkeys.showKey : hotkeys.foregroundKey) = hotkey.key;
}

}  // namespace

bool RegisterHotkeyOf(HotkeyConfig& hotkeys, HotkeyPort& port, HotkeyKind which, Hotkey wanted,
                      SaveHotkey save) {
  if (wanted == HotkeyOf(hotkeys, Other(which))) return false;
  port.UnregisterHotkey(which);
  if (!port.RegisterHotkey(which, wanted)) {
    (void)port.RegisterHotkey(which, HotkeyOf(hotkeys, which));  // as it was, also if it was refused
    return false;
  }
  Store(hotkeys, which, wanted);
  if (which == HotkeyKind::kShow) port.UpdateTrayTip();
  if (save == SaveHotkey::kYes) SaveHotkeys(hotkeys);
  return true;
}

bool RegisterShowHotkey(HotkeyConfig& hotkeys, HotkeyPort& port, Hotkey wanted, SaveHotkey save) {
  return RegisterHotkeyOf(hotkeys, port, HotkeyKind::kShow, wanted, save);
}

void RegisterForegroundHotkey(const HotkeyConfig& hotkeys, HotkeyPort& port) {
  port.UnregisterHotkey(HotkeyKind::kForeground);
  (void)port.RegisterHotkey(HotkeyKind::kForeground, HotkeyOf(hotkeys, HotkeyKind::kForeground));
}

}  // namespace quilmark
