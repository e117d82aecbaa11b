// Any bytes as each of the settings files: what is loaded is what the file's text says, and a load after
// a save gives it again.
#include "config/hotkeys.h"
#include "config/language_setting.h"
#include "config/settings_lines.h"
#include "config/ui_colors.h"
#include "config/window_settings.h"
#include "support/config_folder.h"

using namespace quilmark;

namespace {

void CheckHotkeys(const std::u16string& text) {
  Require(LoadHotkeys() == ReadHotkeys(text));
  SaveHotkeys(LoadHotkeys());
  const HotkeyConfig saved = LoadHotkeys();
  SaveHotkeys(saved);
  Require(LoadHotkeys() == saved);
}

void CheckLanguage(const std::u16string& text) {
  const std::u16string language = LoadLanguageSetting();
  Require(language == ReadLanguageSetting(text));
  SaveLanguageSetting(language);
  const std::u16string saved = LoadLanguageSetting();
  // "lang=" and the line end take their share of a line's length.
  if (language.size() + 6 < kTextLineLimit) Require(saved == language);
  Require(language.starts_with(saved));
}

void CheckColors(const std::u16string& text) {
  LoadUiColors();
  const ColorOverrides loaded = CurrentOverrides;
  Require(loaded == ReadUiColors(text));
  SaveUiColors();
  CurrentOverrides = {};
  LoadUiColors();
  Require(CurrentOverrides == loaded);
  ApplyThemeDefaults(text.size() % 2 != 0);
  ApplyColorOverrides();
  for (size_t role = 0; role < kColorRoles; ++role) {
    if (!loaded.overrideSet[role]) continue;
    Require(CurrentPalette.*kUiColorRoles[role].entry == loaded.overrideColor[role]);
  }
  ResetUiColors();
  LoadUiColors();
  Require(CurrentOverrides == ColorOverrides());
}

void CheckPreset(int index) {
  const bool exists = index >= 0 && index < kUiColorPresets;
  Require(TakeUiColorPreset(index) == exists);
  if (!exists) return;
  const ColorOverrides taken = CurrentOverrides;
  LoadUiColors();
  Require(activePreset == index && CurrentOverrides == taken);
}

void CheckWindow(const std::u16string& text) {
  WindowSize size = {1100, 700};
  WindowSettings settings;
  ReadWindowSettings(text, size, settings);
  Require(LoadWindowSettings({1100, 700}, 0) == size && CurrentWindowSettings == settings);
  SaveWindowSettings(std::nullopt);
  SaveWindowSettings(WindowPlacement{.restored = size});
  // What a line is too long for is the file's loss; numbers never are.
  Require(LoadWindowSettings(size, 96) == size);
  Require(CurrentWindowSettings.columnWidth == settings.columnWidth);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const ConfigFolder folder;
  const std::string_view bytes = InputOf(data, size).RestAsText();
  const std::u16string text = DecodeText(bytes);
  for (const char* name : {"hotkey.ini", "language.ini", "ui_colors.ini", "window.ini"}) {
    folder.Write(name, bytes);
  }
  CheckHotkeys(text);
  CheckLanguage(text);
  CheckColors(text);
  CheckPreset(size == 0 ? -1 : data[0] % 16);
  CheckWindow(text);
  return 0;
}
