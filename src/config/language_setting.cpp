#include "config/language_setting.h"

#include "config/config_directory.h"
#include "config/settings_lines.h"
#include "platform/format.h"

namespace quilmark {

static std::u16string FilePath() { return ConfigPath(u"language.ini"); }

std::u16string ReadLanguageSetting(std::u16string_view text) {
  TextLines lines{text};
  while (const auto pair = NextKeyValue(lines)) {
    if (pair->key == u"lang") return std::u16string(pair->value);
  }
  return {};
}

std::u16string LoadLanguageSetting() {
  return ReadLanguageSetting(ReadTextFile(FilePath()).value_or(u""));
}

void SaveLanguageSetting(std::u16string_view code) {
  WriteTextFile(FilePath(), FormatText(u"lang=%s\n", code));
}

}  // namespace quilmark
