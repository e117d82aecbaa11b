#include "config/hotkeys.h"

#include "config/settings_file.h"
#include "config/settings_lines.h"
#include "platform/format.h"

namespace quilmark {

namespace {

constexpr std::u16string_view kFileName = u"hotkey.ini";

struct Row {
  std::u16string_view key;
  uint32_t HotkeyConfig::*field;
};
constexpr Row kRows[] = {
    {u"modifiers", &HotkeyConfig::showModifiers},
    {u"key", &HotkeyConfig::showKey},
    {u"fg_modifiers", &HotkeyConfig::foregroundModifiers},
    {u"fg_key", &HotkeyConfig::foregroundKey},
};

}  // namespace

HotkeyConfig ReadHotkeys(std::u16string_view text) {
  HotkeyConfig hotkeys;
  TextLines lines{text};
  while (const auto pair = NextKeyValue(lines)) {
    for (const Row& row : kRows) {
      if (pair->key == row.key) hotkeys.*row.field = static_cast<uint32_t>(ParseInt(pair->value));
    }
  }
  return hotkeys;
}

std::u16string HotkeysText(const HotkeyConfig& hotkeys) {
  std::u16string text;
  for (const Row& row : kRows) text += FormatText(u"%s=%u\n", row.key, hotkeys.*row.field);
  return text;
}

HotkeyConfig LoadHotkeys() { return ReadHotkeys(ReadSettingsFile(kFileName)); }

void SaveHotkeys(const HotkeyConfig& hotkeys) { WriteSettingsFile(kFileName, HotkeysText(hotkeys)); }

}  // namespace quilmark
