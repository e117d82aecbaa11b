#include "content/settings/content_config.h"

#include <algorithm>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <utility>

#include "config/config_directory.h"
#include "content/settings/list_files.h"
#include "platform/files.h"
#include "platform/locks.h"
#include "platform/text.h"
#include "platform/text_file.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

struct KeptConfig {
  std::mutex loading;  // over the reading and writing of the files
  OrderedLock lock{LockRank::kLeaf, "ContentConfig"};
  ContentConfig config;  // lock
};

// Never destroyed, as a search may ask until the end.
KeptConfig& Kept() {
  static auto* const kept = new KeptConfig;
  return *kept;
}

// What came of reading a list file.
struct ListReading {
  bool isMissing = false;
  std::optional<std::u16string> text;
};

ListReading Read(const ListFile& file) {
  const std::u16string path = ConfigPath(file.name);
  const bool isThere = IsExistingPath(path) && !IsExistingFolder(path);
  return {.isMissing = !isThere, .text = ReadTextFile(path)};
}

// In vain where the directory cannot be written.
void Write(const ListFile& file, std::u16string_view text) {
  [[maybe_unused]] const bool isWritten = WriteTextFile(ConfigPath(file.name), text);
}

enum class WhereMissing : uint8_t { kWrite, kLeave };

std::vector<std::u16string> ReadZipExts(std::vector<std::u16string> former, WhereMissing where) {
  const ListFile& file = ZipExtsFile();
  const ListReading reading = Read(file);
  if (reading.isMissing) {
    if (where == WhereMissing::kWrite) Write(file, ListText(file, DefaultItems(file)));
    return DefaultItems(file);
  }
  std::vector<std::u16string> exts =
      reading.text ? ExtensionItems(*reading.text, file) : std::move(former);
  for (const std::u16string_view wanted : file.defaults) {
    const auto isEqual = [&](const std::u16string& other) { return EqualNoCase(wanted, other); };
    if (std::none_of(exts.begin(), exts.end(), isEqual)) exts.emplace_back(wanted);
  }
  return exts;
}

std::vector<std::string> ReadInnerPatterns(std::vector<std::string> former, WhereMissing where) {
  const ListFile& file = InnerPatternsFile();
  const ListReading reading = Read(file);
  if (reading.isMissing && where == WhereMissing::kWrite) Write(file, DefaultPatternsText());
  std::vector<std::string> patterns;
  if (!reading.isMissing) patterns = reading.text ? PatternItems(*reading.text) : std::move(former);
  for (const std::u16string_view item : file.defaults) {
    const std::string wanted = ToUtf8(item);
    if (std::find(patterns.begin(), patterns.end(), wanted) == patterns.end())
      patterns.push_back(wanted);
  }
  return patterns;
}

}  // namespace

void LoadContentConfig() {
  KeptConfig& kept = Kept();
  const std::scoped_lock loading(kept.loading);
  ContentConfig config = CurrentContentConfig();
  config.zipExts = ReadZipExts(std::move(config.zipExts), WhereMissing::kWrite);
  config.innerPatterns = ReadInnerPatterns(std::move(config.innerPatterns), WhereMissing::kWrite);
  const std::unique_lock lock(kept.lock);
  std::swap(kept.config, config);
}

ContentConfig ReadContentConfig() {
  return {ReadZipExts({}, WhereMissing::kLeave), ReadInnerPatterns({}, WhereMissing::kLeave)};
}

ContentConfig CurrentContentConfig() {
  KeptConfig& kept = Kept();
  const std::shared_lock lock(kept.lock);
  return kept.config;
}

}  // namespace quilmark
