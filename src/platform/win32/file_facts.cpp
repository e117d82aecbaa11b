#include "platform/file_facts.h"

#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

static uint64_t Joined(DWORD high, DWORD low) { return uint64_t{high} << 32 | low; }

std::optional<FileFacts> ReadFileFacts(std::u16string_view path) {
  const std::u16string longPath = LongPathOf(path);
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (longPath.empty() || !GetFileAttributesExW(Wide(longPath), GetFileExInfoStandard, &data)) {
    return std::nullopt;
  }
  const bool isDirectory = (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
  return FileFacts{
      .size = isDirectory ? 0 : Joined(data.nFileSizeHigh, data.nFileSizeLow),
      .modified = Joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime),
      .created = Joined(data.ftCreationTime.dwHighDateTime, data.ftCreationTime.dwLowDateTime),
      .isDirectory = isDirectory};
}

}  // namespace quilmark
