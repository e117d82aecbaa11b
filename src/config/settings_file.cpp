#include "config/settings_file.h"

#include <cstdint>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <utility>

#include "config/config_directory.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "platform/text_file.h"

namespace quilmark {

void (*pauseBeforeRereading)(uint32_t ms) = SleepMs;

// Paths that are there and could not be read when they were asked for last.
static std::set<std::u16string>& UnreadFiles() {
  static std::set<std::u16string> paths;
  return paths;
}

// Paths that were written since they were flushed last.
static std::set<std::u16string>& UnflushedFiles() {
  static std::set<std::u16string> paths;
  return paths;
}

// Empty where the file is there and cannot be read. Virus scanners and programs that copy files
// elsewhere hold one for a moment, and the settings are read once in a run: so not only once.
static std::optional<std::u16string> ReadPatiently(std::u16string_view path) {
  constexpr uint32_t kPausesMs[] = {50, 130};
  for (size_t tries = 0;; ++tries) {
    if (auto text = ReadTextFile(path)) return text;
    if (IsMissingPath(path) || IsExistingFolder(path)) return u"";
    if (tries == std::size(kPausesMs)) return std::nullopt;
    pauseBeforeRereading(kPausesMs[tries]);
  }
}

std::u16string ReadSettingsFile(std::u16string_view name) {
  const std::u16string path = ConfigPath(name);
  UnreadFiles().erase(path);
  if (auto text = ReadPatiently(path)) return std::move(*text);
  UnreadFiles().insert(path);
  return {};
}

bool IsUnreadSettingsFile(std::u16string_view name) { return UnreadFiles().contains(ConfigPath(name)); }

bool WriteSettingsFile(std::u16string_view name, std::u16string_view text, Flushing flushing) {
  const std::u16string path = ConfigPath(name);
  if (UnreadFiles().contains(path)) return false;
  const std::string bytes = TextFileBytes(text);
  const bool mustFlush = flushing == Flushing::kWaited && UnflushedFiles().contains(path);
  if (!mustFlush && ReadFileBytes(path) == bytes) return true;
  UnflushedFiles().insert(path);
  if (!WriteFileBytes(path, bytes, flushing)) return false;
  if (flushing == Flushing::kWaited) UnflushedFiles().erase(path);
  return true;
}

}  // namespace quilmark
