// Any bytes as a settings file: what is read lies within its ranges, and what is written from it reads
// back as it was, as far as a line may be long.
#include <cstdint>
#include <cstdlib>

#include "config/hotkeys.h"
#include "config/language_setting.h"
#include "config/palette.h"
#include "config/ui_colors.h"
#include "config/window_settings.h"
#include "platform/text_file.h"

using namespace quilmark;

static bool IsWithin(int number, int least, int most) { return number >= least && number <= most; }

static void CheckRanges(const WindowSize& size, const WindowSettings& settings) {
  if (size.width < 800 || size.height < 500) std::abort();
  for (const int width : settings.columnWidth) {
    if (width < 30) std::abort();
  }
  const bool choicesHold = IsWithin(settings.sizePreset, 0, 4) && IsWithin(settings.timePreset, 0, 4) &&
                           IsWithin(settings.sizeUnit, 0, 3) && IsWithin(settings.viewMode, 0, 2);
  const bool limitsHold = IsWithin(settings.contentMaxFileSizeMB, 0, 0x10'0000) &&
                          IsWithin(settings.contentSearchThreads, 0, 64);
  if (!choicesHold || !limitsHold) std::abort();
  for (const std::u16string& extension : settings.contentSearchExts) {
    if (!extension.starts_with(u'.') || extension.find(u',') != std::u16string::npos) std::abort();
  }
}

static bool HasLongLine(std::u16string_view text) {
  TextLines lines{text};
  while (const auto line = NextLine(lines)) {
    if (!line->ends_with(u'\n')) return true;
  }
  return false;
}

static void CheckWindowSettings(std::u16string_view text) {
  WindowSize size = {1100, 700};
  WindowSettings settings;
  ReadWindowSettings(text, size, settings);
  CheckRanges(size, settings);

  const std::u16string written = WindowSettingsText(settings, {.restored = size});
  if (HasLongLine(written)) return;
  WindowSize sizeAgain;
  WindowSettings settingsAgain;
  ReadWindowSettings(written, sizeAgain, settingsAgain);
  if (sizeAgain != size || settingsAgain != settings) std::abort();
}

static void CheckHotkeys(std::u16string_view text) {
  const HotkeyConfig hotkeys = ReadHotkeys(text);
  const HotkeyConfig again = ReadHotkeys(HotkeysText(hotkeys));
  // The reader's numbers are signed: a value above their range comes back as the greatest of them.
  const auto kept = [](uint32_t value) { return value > INT32_MAX ? uint32_t{INT32_MAX} : value; };
  const HotkeyConfig expected = {kept(hotkeys.showModifiers), kept(hotkeys.showKey),
                                 kept(hotkeys.foregroundModifiers), kept(hotkeys.foregroundKey)};
  if (again != expected) std::abort();
}

static void CheckHighlight(const ColorOverrides& colors) {
  const Palette palette = WithOverrides(ThemeDefaults(colors.overrideSet[0]), colors);
  const auto differ = [](Color a, Color b) { return std::abs(Luminance(a) - Luminance(b)); };
  const Color wanted = palette.searchHit;
  const Color taken = AdjustHighlightContrast(palette.textHit, wanted, palette.surface);
  const bool isSeen = differ(palette.textHit, wanted) >= 26 && differ(palette.surface, wanted) >= 18;
  if (taken > 0xFF'FFFF || (isSeen && taken != wanted)) std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = DecodeText({reinterpret_cast<const char*>(data), size});
  CheckWindowSettings(text);
  CheckHotkeys(text);
  const ColorOverrides colors = ReadUiColors(text);
  if (ReadUiColors(UiColorsText(colors)) != colors) std::abort();
  CheckHighlight(colors);
  const std::u16string language = ReadLanguageSetting(text);
  if (TrimText(language) != language || language.size() >= kTextLineLimit) std::abort();
  return 0;
}
