#include "platform/known_folders.h"

#include <cstdlib>
#include <string_view>

#include "platform/drives.h"
#include "platform/files.h"
#include "platform/posix/host_path.h"
#include "platform/posix/user_dirs.h"
#include "platform/utf.h"

namespace quilmark {

namespace {

constexpr size_t kTempPathLimit = 260;  // MAX_PATH of Windows, whose answer this one mirrors

// An environment variable that holds an absolute path; empty without one.
std::string_view PathVariable(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr && value[0] == '/' ? std::string_view(value) : std::string_view();
}

std::string UserDirsFile() {
  const std::string_view config = PathVariable("XDG_CONFIG_HOME");
  if (!config.empty()) return std::string(config) + "/user-dirs.dirs";
  return std::string(PathVariable("HOME")) + "/.config/user-dirs.dirs";
}

std::optional<std::u16string> UserFolder(std::string_view key) {
  const std::string_view home = PathVariable("HOME");
  if (home.empty()) return std::nullopt;
  const std::optional<std::string> text = ReadFileBytes(PathOfHostBytes(UserDirsFile()));
  if (!text) return std::nullopt;
  const std::optional<std::string> folder = FindUserDir(*text, key, home);
  if (!folder) return std::nullopt;
  return PathOfHostBytes(*folder);
}

}  // namespace

std::optional<std::u16string> DocumentsFolder() { return UserFolder("XDG_DOCUMENTS_DIR"); }

std::optional<std::u16string> LocalDataFolder() {
  const std::string_view data = PathVariable("XDG_DATA_HOME");
  if (!data.empty()) return PathOfHostBytes(data);
  const std::string_view home = PathVariable("HOME");
  if (home.empty()) return std::nullopt;
  std::u16string usual = PathOfHostBytes(std::string(home) + "/.local/share");
  if (!IsExistingPath(usual)) return std::nullopt;
  return usual;
}

void ForgetKnownFolders() {}

std::optional<std::u16string> TempFolder() {
  const std::string_view named = PathVariable("TMPDIR");
  std::u16string folder = PathOfHostBytes(named.empty() ? "/tmp" : named);
  if (folder.back() != u'\\') folder += u'\\';
  if (folder.size() >= kTempPathLimit) return std::nullopt;
  return folder;
}

std::optional<std::u16string> DesktopFolder() {
  const std::optional<std::u16string> folder = UserFolder("XDG_DESKTOP_DIR");
  if (!folder) return std::nullopt;
  const std::optional<std::u16string> mapped = MappedPathOf(*folder);
  return mapped ? mapped : folder;
}

std::optional<std::u16string> EnvironmentText(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) return std::nullopt;
  return FromUtf8(value);
}

}  // namespace quilmark
