#include "platform/win32/file_handle.h"

#include <algorithm>

#include "platform/drive_roots.h"
#include "platform/drives.h"
#include "platform/win32/wide.h"

namespace quilmark {

std::u16string LongPathOf(std::u16string_view path) {
  if (path.find(u'\0') != path.npos) return {};
  std::u16string resolved = ResolveMappedPath(path);
  std::replace(resolved.begin(), resolved.end(), u'/', u'\\');  // the long form knows no other separator
  if (resolved.starts_with(u"\\\\?\\") || resolved.starts_with(u"\\\\.\\")) return resolved;
  if (resolved.starts_with(u"\\\\")) return u"\\\\?\\UNC" + resolved.substr(1);
  if (!IsDrivePath(resolved)) return resolved;
  if (resolved.size() == 2) resolved += u'\\';  // "X:" alone is the current folder of the drive
  return u"\\\\?\\" + resolved;
}

bool IsNameSurrogate(DWORD attributes, DWORD tag) {
  return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && IsReparseTagNameSurrogate(tag);
}

UniqueFind FindFirst(const std::u16string& pattern, WIN32_FIND_DATAW& found, DWORD flags) {
  return UniqueFind(
      FindFirstFileExW(Wide(pattern), FindExInfoBasic, &found, FindExSearchNameMatch, nullptr, flags));
}

UniqueFile OpenLongPath(const std::u16string& longPath, DWORD access, DWORD disposition, DWORD flags) {
  constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  return UniqueFile(
      CreateFileW(Wide(longPath), access, kShareAll, nullptr, disposition, flags, nullptr));
}

UniqueFile OpenPath(std::u16string_view path, DWORD access, DWORD disposition, DWORD flags) {
  return OpenLongPath(LongPathOf(path), access, disposition, flags);
}

UniqueFile OpenFolder(std::u16string_view path) {
  return OpenPath(path, FILE_READ_ATTRIBUTES, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS);
}

}  // namespace quilmark
