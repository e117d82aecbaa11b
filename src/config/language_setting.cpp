#include "config/language_setting.h"

#include "config/settings_file.h"
#include "config/settings_lines.h"
#include "platform/format.h"

namespace quilmark {

static constexpr std::u16string_view kFileName = u"language.ini";

std::u16string ReadLanguageSetting(std::u16string_view text) {
  TextLines lines{text};
  while (const auto pair = NextKeyValue(lines)) {
    if (pair->key == u"lang") return std::u16string(pair->value);
  }
  return {};
}

std::u16string LoadLanguageSetting() { return ReadLanguageSetting(ReadSettingsFile(kFileName)); }

void SaveLanguageSetting(std::u16string_view code) {
  WriteSettingsFile(kFileName, FormatText(u"lang=%s\n", code));
}

}  // namespace quilmark
