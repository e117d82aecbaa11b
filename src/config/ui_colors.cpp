#include "config/ui_colors.h"

#include "config/settings_file.h"
#include "config/settings_lines.h"
#include "platform/format.h"
#include "platform/text.h"
#include "platform/text_file.h"

namespace quilmark {

// Columns: surface, toolbar, editWell, text, textHit, searchHit, header, rowSel, accent, border.
// clang-format off
const std::array<UiColorPreset, kUiColorPresets> kUiColorPresetRows = {{
    {u"品牌薄荷（浅色）", u"Brand Mint Light", 0,
     {0xFFFFFF, 0xF8FAFC, 0xFFFFFF, 0x475569, 0x168B4F, 0xB0EDD0, 0x5C6B82, 0xE8F8F1, 0x42B883, 0xE2E8F0}},
    {u"品牌薄荷（深色）", u"Brand Mint Dark", 1,
     {0x12141C, 0x161823, 0x1E2230, 0xCBD5E1, 0x5CE0AB, 0x355A48, 0x9AA3B8, 0x263A33, 0x42B883, 0x222430}},
    {u"海雾（浅色）", u"Sea Mist Light", 0,
     {0xF7FBFC, 0xEEF5F7, 0xFFFFFF, 0x2C3E4A, 0x0B7A8A, 0xD2EEF2, 0x5A727E, 0xD8EFF3, 0x1A9BA8, 0xD0DEE4}},
    {u"午夜石板", u"Midnight Slate", 1,
     {0x141518, 0x1A1B20, 0x22242A, 0xE2E4E9, 0xF0B45A, 0x3A2E1A, 0x9A9EA8, 0x3A3222, 0xE8A83C, 0x2A2C34}},
    {u"暖纸", u"Warm Paper", 0,
     {0xFCFBF8, 0xF3F1EC, 0xFFFFFF, 0x3A3630, 0x2F6F6A, 0xD9EBE8, 0x7A746A, 0xE0EEEB, 0x3D8B82, 0xE4E0D8}},
    {u"深海", u"Deep Ocean", 1,
     {0x0B121C, 0x101826, 0x162234, 0xD7E2F0, 0x4DD4C8, 0x1A3A42, 0x8A9BB0, 0x1A3A48, 0x3BC4B8, 0x1C283A}},
    {u"赤陶", u"Terra Clay", 0,
     {0xFFF9F5, 0xF7F0EA, 0xFFFFFF, 0x3D2E26, 0xC45C26, 0xF5DFD0, 0x7A6558, 0xF3E0D4, 0xD46A2E, 0xE8DCD2}},
    {u"夜林", u"Forest Night", 1,
     {0x0E1412, 0x141C18, 0x1C2822, 0xD8E6DC, 0x7DD39A, 0x244232, 0x8FA596, 0x244232, 0x5CC482, 0x223028}},
    {u"雾蓝", u"Fog Blue", 0,
     {0xF5F7FA, 0xEBEFF5, 0xFFFFFF, 0x2A3342, 0x2F6FB8, 0xD7E6F8, 0x6B788A, 0xDBE8F7, 0x3A7CC8, 0xD4DBE6}},
    {u"碳金", u"Carbon Gold", 1,
     {0x111112, 0x18181A, 0x222226, 0xE8E6E1, 0xE0C072, 0x3A321C, 0xA09A8E, 0x3A3420, 0xD4B058, 0x2C2C30}},
}};
// clang-format on

int activePreset = -1;

namespace {

constexpr std::u16string_view kFileName = u"ui_colors.ini";

constexpr std::u16string_view kHeading =
    u"# Custom UI colors (hex RRGGBB). Use Reset in Settings to restore theme defaults.\n"
    u"# 自定义界面颜色（十六进制 RRGGBB）。在设置中选择“重置”可恢复主题默认颜色。\n";

void TakePair(const KeyValue& pair, ColorOverrides& overrides) {
  const auto color = ParseHexColor(pair.value);
  if (!color) return;
  for (size_t role = 0; role < kColorRoles; ++role) {
    if (!EqualNoCase(pair.key, kUiColorRoles[role].key)) continue;
    overrides.overrideColor[role] = *color;
    overrides.overrideSet[role] = true;
  }
}

}  // namespace

ColorOverrides ReadUiColors(std::u16string_view text) {
  ColorOverrides overrides;
  TextLines lines{text};
  while (const auto pair = NextKeyValue(lines)) {
    if (!pair->key.starts_with(u'#')) TakePair(*pair, overrides);
  }
  return overrides;
}

std::u16string UiColorsText(const ColorOverrides& overrides) {
  std::u16string text(kHeading);
  for (size_t role = 0; role < kColorRoles; ++role) {
    if (!overrides.overrideSet[role]) continue;
    text +=
        FormatText(u"%ls=%s\n", kUiColorRoles[role].key, HexColorText(overrides.overrideColor[role]));
  }
  return text;
}

void LoadUiColors() { CurrentOverrides = ReadUiColors(ReadSettingsFile(kFileName)); }

void SaveUiColors() { WriteSettingsFile(kFileName, UiColorsText(CurrentOverrides)); }

void ResetUiColors() {
  activePreset = -1;
  CurrentOverrides = {};
  SaveUiColors();
}

bool TakeUiColorPreset(int index) {
  if (index < 0 || index >= kUiColorPresets) return false;
  const UiColorPreset& preset = kUiColorPresetRows[static_cast<size_t>(index)];
  for (size_t role = 0; role < kColorRoles; ++role) {
    CurrentOverrides.overrideColor[role] = ColorOfHex(preset.rrggbb[role]);
    CurrentOverrides.overrideSet[role] = true;
  }
  activePreset = index;
  SaveUiColors();
  return true;
}

}  // namespace quilmark
