#include "platform/file_facts.h"

#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

uint64_t Joined(DWORD high, DWORD low) { return uint64_t{high} << 32 | low; }

// Of what an attribute query and a listing both give, under the same names.
template <typename Data>
FileFacts FactsFrom(const Data& data) {
  const bool isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return FileFacts{
      .size = isDirectory ? 0 : Joined(data.nFileSizeHigh, data.nFileSizeLow),
      .modified = Joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime),
      .created = Joined(data.ftCreationTime.dwHighDateTime, data.ftCreationTime.dwLowDateTime),
      .isDirectory = isDirectory};
}

// The folder tells what it knows of a file that itself lets nobody ask.
// NTFS has names that other systems wrote, with "*" or "?": here a pattern, of some other file.
std::optional<FileFacts> FactsFromFolder(const std::u16string& longPath) {
  if (longPath.find_first_of(u"*?", longPath.rfind(u'\\') + 1) != std::u16string::npos)
    return std::nullopt;
  WIN32_FIND_DATAW found = {};
  if (!FindFirst(longPath, found)) return std::nullopt;
  return FactsFrom(found);
}

}  // namespace

std::optional<FileFacts> ReadFileFacts(std::u16string_view path) {
  const std::u16string longPath = LongPathOf(path);
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (longPath.empty()) return std::nullopt;
  if (GetFileAttributesExW(Wide(longPath), GetFileExInfoStandard, &data)) return FactsFrom(data);
  const DWORD error = GetLastError();
  const bool isClosed = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
  return isClosed ? FactsFromFolder(longPath) : std::nullopt;
}

}  // namespace quilmark
