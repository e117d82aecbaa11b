#include "platform/win32/guarded_write.h"

#include <iterator>
#include <string>
#include <utility>

#include "platform/known_folders.h"
#include "platform/text.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

// What cannot be asked counts as one, what is not there does not.
bool IsLink(const std::u16string& longPath) {
  WIN32_FIND_DATAW found;
  if (!FindFirst(longPath, found)) {
    const DWORD error = GetLastError();
    return error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND;
  }
  return IsNameSurrogate(found.dwFileAttributes, found.dwReserved0);
}

// The length of the longest of the shared folders that `longPath` lies below; 0 below none.
size_t LengthOfSharedFolder(std::u16string_view longPath) {
  size_t longest = 0;
  for (const auto& folder : {DocumentsFolder(), LocalDataFolder(), TempFolder()}) {
    if (!folder) continue;
    std::u16string base = LongPathOf(*folder);
    while (base.ends_with(u'\\')) base.pop_back();
    const bool isBelow = longPath.size() > base.size() && longPath[base.size()] == u'\\' &&
                         EqualNoCase(longPath.substr(0, base.size()), base);
    if (isBelow && base.size() > longest) longest = base.size();
  }
  return longest;
}

// Short names stay as they are in the first; the second asks more of a server, and knows the long ones.
constexpr DWORD kForms[] = {FILE_NAME_OPENED, FILE_NAME_NORMALIZED};

// The name that the system has for what is open, with no link left in it; empty where it cannot tell.
// By the volume's device, as a volume needs no letter.
std::u16string SystemPathOf(HANDLE file, DWORD form) {
  constexpr int kMostTries = 3;  // a filter may answer the same whatever the room
  std::u16string path(MAX_PATH, u'\0');
  for (int tries = 0; tries < kMostTries; ++tries) {
    const DWORD length = GetFinalPathNameByHandleW(
        file, Wide(path.data()), static_cast<DWORD>(path.size()), form | VOLUME_NAME_NT);
    const bool fits = length < path.size();
    path.resize(fits ? length : size_t{length} + 1);
    if (fits) return path;
  }
  return {};
}

// That of the folder at the end of `longFolder`, whose first `base` units are a shared folder. The
// system is asked for the shared folder alone: the rest must be what it says.
std::u16string SystemFolderOf(const std::u16string& longFolder, size_t base, HANDLE shared, DWORD form) {
  std::u16string path = SystemPathOf(shared, form);
  if (path.empty()) return {};
  while (path.ends_with(u'\\')) path.pop_back();
  return path.append(longFolder, base);
}

bool LiesInPlace(HANDLE file, const WritePlan& plan, std::u16string_view name) {
  if (!plan.isShared) return true;
  for (size_t i = 0; i < std::size(kForms); ++i) {
    const std::u16string& folder = plan.systemFolders[i];
    if (!folder.empty() && EqualNoCase(SystemPathOf(file, kForms[i]), folder + std::u16string(name)))
      return true;
  }
  return false;
}

// Empty for a link.
UniqueFile OpenNoLink(const std::u16string& longPath, DWORD access, DWORD disposition) {
  UniqueFile file = OpenLongPath(longPath, access, disposition, FILE_FLAG_OPEN_REPARSE_POINT);
  FILE_ATTRIBUTE_TAG_INFO info = {};
  const bool isReparsePoint =
      file && GetFileInformationByHandleEx(file.Get(), FileAttributeTagInfo, &info, sizeof info) &&
      (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  if (!isReparsePoint) return file;
  if (IsNameSurrogate(info.FileAttributes, info.ReparseTag)) return {};
  // Content of a cloud or packed content: its own driver opens what stands behind it.
  file.Reset();
  return OpenLongPath(longPath, access, disposition, 0);
}

bool IsReachedByLink(std::u16string_view longPath, size_t base) {
  if (base == 0) return false;
  for (size_t end = longPath.find(u'\\', base + 1); end != longPath.npos;
       end = longPath.find(u'\\', end + 1)) {
    if (IsLink(std::u16string(longPath.substr(0, end)))) return true;
  }
  return false;
}

// For a folder as in WritePlan.
WritePlan PlanLong(std::u16string longFolder) {
  WritePlan plan = {.folder = std::move(longFolder)};
  const size_t base = LengthOfSharedFolder(plan.folder);
  plan.isShared = base != 0;
  plan.isRefused = IsReachedByLink(plan.folder, base);
  if (!plan.isShared || plan.isRefused) return plan;
  const UniqueFile shared = OpenLongPath(plan.folder.substr(0, base + 1), FILE_READ_ATTRIBUTES,
                                         OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  for (size_t i = 0; shared && i < std::size(kForms); ++i) {
    plan.systemFolders[i] = SystemFolderOf(plan.folder, base, shared.Get(), kForms[i]);
  }
  return plan;
}

}  // namespace

bool IsReachedByLink(std::u16string_view path) {
  const std::u16string longPath = LongPathOf(path);
  return IsReachedByLink(longPath, LengthOfSharedFolder(longPath));
}

WritePlan PlanWrites(std::u16string_view folder) {
  std::u16string longFolder = LongPathOf(folder);
  if (!longFolder.empty() && !longFolder.ends_with(u'\\')) longFolder += u'\\';
  return PlanLong(std::move(longFolder));
}

UniqueFile OpenPlanned(const WritePlan& plan, std::u16string_view name, DWORD access,
                       DWORD disposition) {
  if (disposition == CREATE_ALWAYS || plan.isRefused) return {};
  UniqueFile file = OpenNoLink(plan.folder + std::u16string(name), access, disposition);
  if (file && !LiesInPlace(file.Get(), plan, name)) file.Reset();
  return file;
}

UniqueFile OpenForWriting(std::u16string_view path, DWORD access, DWORD disposition) {
  const std::u16string longPath = LongPathOf(path);
  const size_t name = longPath.rfind(u'\\') + 1;
  UniqueFile file =
      OpenPlanned(PlanLong(longPath.substr(0, name)), longPath.substr(name), access, disposition);
  if (!file) ForgetKnownFolders();
  return file;
}

}  // namespace quilmark
