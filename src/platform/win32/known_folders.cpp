#include "platform/known_folders.h"

#include <windows.h>

#include <shlobj.h>

#include <mutex>

#include "platform/clock.h"
#include "platform/drive_roots.h"
#include "platform/drives.h"
#include "platform/utf.h"
#include "platform/win32/unique.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

struct TaskTextTraits {
  using Value = wchar_t*;
  static Value Empty() { return nullptr; }
  static void Close(Value text) { CoTaskMemFree(text); }
};

std::optional<std::u16string> SystemFolder(const KNOWNFOLDERID& id) {
  wchar_t* text = nullptr;
  const HRESULT result = SHGetKnownFolderPath(id, KF_FLAG_DONT_VERIFY, nullptr, &text);
  const Unique<TaskTextTraits> owner(text);
  if (FAILED(result) || text == nullptr) return std::nullopt;
  return FromWide(text);
}

// What the system has named, until it is to be asked again. Long enough for the moves of a frame and the
// lines of a log; a user who moves the folder is followed after that.
constexpr uint64_t kKeptMs = 10'000;
struct KeptFolder {
  const KNOWNFOLDERID& id;
  std::optional<std::u16string> path = {};  // guarded by keptMutex
  uint64_t askedMs = 0;                     // likewise
};
std::mutex keptMutex;  // for a copy only: the question may go to a disk or a server
KeptFolder keptDocuments = {FOLDERID_Documents}, keptLocalData = {FOLDERID_LocalAppData};

std::optional<std::u16string> PathOf(KeptFolder& kept) {
  std::unique_lock lock(keptMutex);
  const uint64_t nowMs = TickMs();
  if (kept.path && nowMs - kept.askedMs < kKeptMs) return kept.path;
  lock.unlock();
  const std::optional<std::u16string> asked = SystemFolder(kept.id);
  lock.lock();
  kept.path = asked;
  kept.askedMs = nowMs;
  return asked;
}

// A path of the system as one of files.h: where its letter is mapped to a folder, in the form that no
// mapping takes for its own.
std::u16string PastMappings(const std::u16string& path) {
  const bool isHidden = IsDrivePath(path) && SharedRootOf(path[0]) != nullptr;
  return isHidden ? u"\\\\?\\" + path : path;
}

}  // namespace

std::optional<std::u16string> DocumentsFolder() {
  const std::optional<std::u16string> folder = PathOf(keptDocuments);
  if (!folder) return std::nullopt;
  return PastMappings(*folder);
}

std::optional<std::u16string> LocalDataFolder() {
  const std::optional<std::u16string> folder = PathOf(keptLocalData);
  if (!folder) return std::nullopt;
  return PastMappings(*folder);
}

void ForgetKnownFolders() {
  const std::scoped_lock lock(keptMutex);
  keptDocuments.path.reset();
  keptLocalData.path.reset();
}

std::optional<std::u16string> TempFolder() {
  wchar_t path[MAX_PATH];
  const DWORD length = GetTempPathW(MAX_PATH, path);
  if (length == 0 || length >= MAX_PATH) return std::nullopt;
  return PastMappings(std::u16string(FromWide(std::wstring_view(path, length))));
}

std::optional<std::u16string> DesktopFolder() {
  const std::optional<std::u16string> folder = SystemFolder(FOLDERID_Desktop);
  if (!folder) return std::nullopt;
  const std::optional<std::u16string> mapped = MappedPathOf(*folder);
  return mapped ? *mapped : PastMappings(*folder);
}

std::optional<std::u16string> EnvironmentText(const char* name) {
  const std::u16string wideName = FromUtf8(name);
  std::u16string value(MAX_PATH, u'\0');
  for (;;) {
    SetLastError(ERROR_SUCCESS);
    const DWORD length =
        GetEnvironmentVariableW(Wide(wideName), Wide(value.data()), static_cast<DWORD>(value.size()));
    const bool isMissing = length == 0 && GetLastError() == ERROR_ENVVAR_NOT_FOUND;
    if (isMissing) return std::nullopt;
    const bool fits = length < value.size();
    value.resize(length);
    if (fits) return value;
  }
}

}  // namespace quilmark
