#include "config/settings_file.h"

#include <set>

#include "config/config_directory.h"
#include "platform/files.h"
#include "platform/text_file.h"

namespace quilmark {

// Paths that are there and could not be read when they were asked for last.
static std::set<std::u16string>& UnreadFiles() {
  static std::set<std::u16string> paths;
  return paths;
}

std::u16string ReadSettingsFile(std::u16string_view name) {
  const std::u16string path = ConfigPath(name);
  UnreadFiles().erase(path);
  if (auto text = ReadTextFile(path)) return std::move(*text);
  if (!IsMissingPath(path) && !IsExistingFolder(path)) UnreadFiles().insert(path);
  return {};
}

bool IsUnreadSettingsFile(std::u16string_view name) { return UnreadFiles().contains(ConfigPath(name)); }

bool WriteSettingsFile(std::u16string_view name, std::u16string_view text) {
  const std::u16string path = ConfigPath(name);
  return !UnreadFiles().contains(path) && WriteTextFile(path, text);
}

}  // namespace quilmark
