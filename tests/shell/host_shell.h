// A shell that deletes by calls of a POSIX host, with the faults that the system's has.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "platform/files.h"
#include "shell/actions/deletion.h"
#include "shell/recording_shell.h"

namespace quilmark {

// Deletes what its paths name. Attributes and open files are made up, as the host has none.
class HostShell : public RecordingShell, private EntryCalls {
 public:
  explicit HostShell(uint32_t seed) : random_(seed) {
    operationDeletes = [this](const std::u16string& path) { return DeleteByShell(path); };
    oldCallDeletes = [this](const std::u16string& path) { return DeleteByPattern(path); };
    directlyDeletes = [this](const std::u16string& path) { return DeleteEntry(*this, path); };
  }

  using Path = std::filesystem::path;

  std::map<Path, uint32_t> attributes;  // but for kFolderAttribute; without an entry: none
  std::set<Path> open;                  // cannot be deleted
  std::set<Path> lies;                  // said to be deleted, and were not
  int refusals = 4;                     // one of so many calls of the first two ways is refused

  static Path HostPath(const std::u16string& path) { return HostPathBytes(path); }

 private:
  bool IsHeld(const Path& path) const {
    const auto found = attributes.find(path);
    return open.contains(path) || (found != attributes.end() && (found->second & kReadOnlyAttribute));
  }

  // As far as it gets. Follows no link.
  bool DeleteTree(const Path& path, bool mindsReadOnly) {
    bool isWhole = true;
    if (std::filesystem::is_directory(std::filesystem::symlink_status(path))) {
      std::vector<Path> below;
      for (const auto& entry : std::filesystem::directory_iterator(path)) below.push_back(entry.path());
      for (const Path& each : below) isWhole = DeleteTree(each, mindsReadOnly) && isWhole;
    }
    const bool isHeld = mindsReadOnly ? IsHeld(path) : open.contains(path);
    return isWhole && !isHeld && std::filesystem::remove(path);
  }

  bool DeleteByShell(const std::u16string& path) {
    const Path host = HostPath(path);
    if (!std::filesystem::exists(std::filesystem::symlink_status(host))) return false;
    switch (random_() % static_cast<uint32_t>(refusals)) {
      case 0:
        return false;
      case 1:
        if (random_() % 4 != 0) break;
        lies.insert(host);
        return true;
      default:
        break;
    }
    return DeleteTree(host, false);
  }

  // Takes dots and blanks off the ends of names, and wildcards for what they match.
  bool DeleteByPattern(const std::u16string& path) {
    if (random_() % static_cast<uint32_t>(refusals) == 0) return false;
    std::u16string trimmed;
    for (const char16_t unit : path + u"\\") {
      while (unit == u'\\' && (trimmed.ends_with(u'.') || trimmed.ends_with(u' '))) trimmed.pop_back();
      trimmed.push_back(unit);
    }
    trimmed.pop_back();
    const Path pattern = HostPath(trimmed);
    if (!std::filesystem::is_directory(pattern.parent_path())) return false;
    std::vector<Path> found;
    for (const auto& entry : std::filesystem::directory_iterator(pattern.parent_path())) {
      if (Matches(pattern.filename().string(), entry.path().filename().string())) {
        found.push_back(entry.path());
      }
    }
    bool isWhole = !found.empty();
    for (const Path& each : found) isWhole = DeleteTree(each, true) && isWhole;
    return isWhole;
  }

  static bool Matches(std::string_view pattern, std::string_view name) {
    if (pattern.empty()) return name.empty();
    if (pattern[0] == '*') {
      return Matches(pattern.substr(1), name) || (!name.empty() && Matches(pattern, name.substr(1)));
    }
    return !name.empty() && (pattern[0] == '?' || pattern[0] == name[0]) &&
           Matches(pattern.substr(1), name.substr(1));
  }

  uint32_t AttributesOf(const std::u16string& path) override {
    const Path host = HostPath(path);
    const auto status = std::filesystem::symlink_status(host);
    if (!std::filesystem::exists(status)) return kNoAttributes;
    const auto found = attributes.find(host);
    return (found != attributes.end() ? found->second : 0) |
           (std::filesystem::is_directory(status) ? kFolderAttribute : 0);
  }
  bool SetAttributes(const std::u16string& path, uint32_t wanted) override {
    attributes[HostPath(path)] = wanted & ~kFolderAttribute;
    return true;
  }
  bool RemoveFolder(const std::u16string& path) override {
    const Path host = HostPath(path);
    std::error_code error;
    const bool isFolder = std::filesystem::is_directory(std::filesystem::symlink_status(host));
    return isFolder && !IsHeld(host) && std::filesystem::remove(host, error);
  }
  bool RemoveFile(const std::u16string& path) override {
    const Path host = HostPath(path);
    const bool isFolder = std::filesystem::is_directory(std::filesystem::symlink_status(host));
    return !isFolder && !IsHeld(host) && RemoveFileAt(path);
  }
  std::vector<std::u16string> OtherNamesOf(const std::u16string&) override { return {}; }
  static bool RemoveFileAt(const std::u16string& path) { return quilmark::RemoveFile(path); }

  std::mt19937 random_;
};

}  // namespace quilmark
