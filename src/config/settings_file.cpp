#include "config/settings_file.h"

#include <cstdint>
#include <iterator>
#include <mutex>
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

namespace {

class PathSet {
 public:
  bool Contains(const std::u16string& path) {
    const std::scoped_lock lock(mutex_);
    return paths_.contains(path);
  }
  void Insert(const std::u16string& path) {
    const std::scoped_lock lock(mutex_);
    paths_.insert(path);
  }
  void Erase(const std::u16string& path) {
    const std::scoped_lock lock(mutex_);
    paths_.erase(path);
  }

 private:
  std::mutex mutex_;
  std::set<std::u16string> paths_;  // mutex_
};

}  // namespace

// Paths that are there and could not be read when they were asked for last. Never destroyed, as a job
// may read until the end.
static PathSet& UnreadFiles() {
  static auto* const paths = new PathSet;
  return *paths;
}

// Paths that were written since they were flushed last. Never destroyed, likewise.
static PathSet& UnflushedFiles() {
  static auto* const paths = new PathSet;
  return *paths;
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
  UnreadFiles().Erase(path);
  if (auto text = ReadPatiently(path)) return std::move(*text);
  UnreadFiles().Insert(path);
  return {};
}

bool IsUnreadSettingsFile(std::u16string_view name) { return UnreadFiles().Contains(ConfigPath(name)); }

bool WriteSettingsFile(std::u16string_view name, std::u16string_view text, Flushing flushing) {
  const std::u16string path = ConfigPath(name);
  if (UnreadFiles().Contains(path)) return false;
  const std::string bytes = TextFileBytes(text);
  const bool mustFlush = flushing == Flushing::kWaited && UnflushedFiles().Contains(path);
  if (!mustFlush && ReadFileBytes(path) == bytes) return true;
  UnflushedFiles().Insert(path);
  if (!WriteFileBytes(path, bytes, flushing)) return false;
  if (flushing == Flushing::kWaited) UnflushedFiles().Erase(path);
  return true;
}

}  // namespace quilmark
