#include "platform/win32/guarded_write.h"

#include <string>

#include "platform/known_folders.h"
#include "platform/text.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

// What cannot be asked counts as one, what is not there does not.
bool IsLink(const std::u16string& longPath) {
  WIN32_FIND_DATAW found;
  const HANDLE find =
      FindFirstFileExW(Wide(longPath), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr, 0);
  if (find == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    return error != ERROR_FILE_NOT_FOUND && error != ERROR_PATH_NOT_FOUND;
  }
  FindClose(find);
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

// The name that the system has for what is open, with no link left in it; empty where it cannot tell.
// By the volume's device, as a volume needs no letter.
std::u16string SystemPathOf(HANDLE file, DWORD form) {
  std::u16string path(MAX_PATH, u'\0');
  for (;;) {
    const DWORD length = GetFinalPathNameByHandleW(
        file, Wide(path.data()), static_cast<DWORD>(path.size()), form | VOLUME_NAME_NT);
    const bool fits = length < path.size();
    path.resize(length);
    if (fits) return path;
  }
}

bool LiesBelow(HANDLE folder, std::u16string_view rest, HANDLE file, DWORD form) {
  std::u16string expected = SystemPathOf(folder, form);
  if (expected.empty()) return false;
  while (expected.ends_with(u'\\')) expected.pop_back();
  return EqualNoCase(SystemPathOf(file, form), expected.append(rest));
}

// Whether `file`, opened by `longPath`, lies where that says below its shared folder.
bool IsWhereItsNameSays(HANDLE file, const std::u16string& longPath) {
  const size_t base = LengthOfSharedFolder(longPath);
  if (base == 0) return true;
  const std::u16string folderName = longPath.substr(0, base) + u'\\';  // "X:" alone is the volume
  const UniqueFile folder =
      OpenPath(folderName, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
  const std::u16string_view rest = std::u16string_view(longPath).substr(base);
  // Short names stay in the first form; the second asks more of a server, and knows the long ones.
  return folder && (LiesBelow(folder.Get(), rest, file, FILE_NAME_OPENED) ||
                    LiesBelow(folder.Get(), rest, file, FILE_NAME_NORMALIZED));
}

UniqueFile OpenByName(std::u16string_view path, DWORD access, DWORD disposition) {
  if (disposition == CREATE_ALWAYS || IsReachedByLink(path)) return {};
  UniqueFile file = OpenPath(path, access, disposition, FILE_FLAG_OPEN_REPARSE_POINT);
  FILE_ATTRIBUTE_TAG_INFO info = {};
  const bool isReparsePoint =
      file && GetFileInformationByHandleEx(file.Get(), FileAttributeTagInfo, &info, sizeof info) &&
      (info.FileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
  if (!isReparsePoint) return file;
  if (IsNameSurrogate(info.FileAttributes, info.ReparseTag)) return {};
  // Content of a cloud or packed content: its own driver opens what stands behind it.
  file.Reset();
  return OpenPath(path, access, disposition);
}

}  // namespace

bool IsReachedByLink(std::u16string_view path) {
  const std::u16string longPath = LongPathOf(path);
  const size_t base = LengthOfSharedFolder(longPath);
  if (base == 0) return false;
  for (size_t end = longPath.find(u'\\', base + 1); end != longPath.npos;
       end = longPath.find(u'\\', end + 1)) {
    if (IsLink(longPath.substr(0, end))) return true;
  }
  return false;
}

UniqueFile OpenForWriting(std::u16string_view path, DWORD access, DWORD disposition) {
  UniqueFile file = OpenByName(path, access, disposition);
  if (file && IsWhereItsNameSays(file.Get(), LongPathOf(path))) return file;
  ForgetKnownFolders();
  return {};
}

}  // namespace quilmark
