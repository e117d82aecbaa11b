#include <windows.h>

#include <string_view>

#include "platform/files.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

// A junction and a link to a folder carry the attribute of a folder too. One without a tag is a link of
// the host below Wine, which may lead out of the drive or back into itself, and is no folder to a POSIX
// host either.
bool IsFolder(const WIN32_FIND_DATAW& found) {
  const bool isHostLink =
      (found.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 && found.dwReserved0 == 0;
  return (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0 && !isHostLink;
}

void AppendFound(const WIN32_FIND_DATAW& found, FolderListing& listing) {
  const std::u16string_view name = FromWide(std::wstring_view(found.cFileName));
  if (name == u"." || name == u"..") return;
  listing.entries.push_back({.nameOffset = static_cast<uint32_t>(listing.names.size()),
                             .nameLength = static_cast<uint16_t>(name.size()),
                             .isDirectory = IsFolder(found),
                             .isLink = IsNameSurrogate(found.dwFileAttributes, found.dwReserved0)});
  listing.names += name;
}

}  // namespace

bool ListFolder(std::u16string_view path, FolderListing& listing) {
  listing.Clear();
  std::u16string pattern = LongPathOf(path);
  if (pattern.empty()) return false;  // "\\*" is the root of the current drive
  if (!pattern.ends_with(u'\\')) pattern += u'\\';
  pattern += u'*';
  WIN32_FIND_DATAW found;
  const UniqueFind find = FindFirst(pattern, found, FIND_FIRST_EX_LARGE_FETCH);
  // The root of an empty drive has not even "." to be found.
  if (!find) return GetLastError() == ERROR_FILE_NOT_FOUND;
  do {
    AppendFound(found, listing);
  } while (FindNextFileW(find.Get(), &found) != 0);
  return GetLastError() == ERROR_NO_MORE_FILES;
}

}  // namespace quilmark
