#include "platform/files.h"

#include <windows.h>

#include <algorithm>

#include "platform/drives.h"
#include "platform/file_rewrite.h"
#include "platform/known_folders.h"
#include "platform/utf.h"
#include "platform/volume_device.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/guarded_write.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

constexpr size_t kMostAtOnce = 1u << 30;  // a call counts in 32 bits
constexpr size_t kReadAhead = 64 * 1024;

std::optional<uint64_t> SizeOf(HANDLE file) {
  LARGE_INTEGER size;
  if (!GetFileSizeEx(file, &size)) return std::nullopt;
  return static_cast<uint64_t>(size.QuadPart);
}

bool WriteAll(HANDLE file, std::string_view bytes) {
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto piece = static_cast<DWORD>(std::min(bytes.size(), kMostAtOnce));
    if (!WriteFile(file, bytes.data(), piece, &written, nullptr) || written == 0) return false;
    bytes.remove_prefix(written);
  }
  return true;
}

class Win32File : public RewritableFile {
 public:
  Win32File(UniqueFile file, uint64_t size) : file_(std::move(file)) { sizeBytes = size; }

  bool WriteAt(uint64_t offset, std::string_view bytes) override {
    LARGE_INTEGER place;
    place.QuadPart = static_cast<LONGLONG>(offset);
    if (bytes.empty()) return true;
    return SetFilePointerEx(file_.Get(), place, nullptr, FILE_BEGIN) && WriteAll(file_.Get(), bytes);
  }
  bool Cut(uint64_t length) override {
    FILE_END_OF_FILE_INFO end;
    end.EndOfFile.QuadPart = static_cast<LONGLONG>(length);
    return SetFileInformationByHandle(file_.Get(), FileEndOfFileInfo, &end, sizeof end) != 0;
  }
  // A file system without such a thing has done what it can.
  bool Flush() override {
    if (FlushFileBuffers(file_.Get()) != 0) return true;
    const DWORD error = GetLastError();
    return error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED;
  }

 private:
  UniqueFile file_;
};

}  // namespace

bool IsExistingPath(std::u16string_view path) {
  return GetFileAttributesW(Wide(LongPathOf(path))) != INVALID_FILE_ATTRIBUTES;
}

bool IsMissingPath(std::u16string_view path) {
  if (GetFileAttributesW(Wide(LongPathOf(path))) != INVALID_FILE_ATTRIBUTES) return false;
  const DWORD error = GetLastError();
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND;
}

bool IsExistingFolder(std::u16string_view path) {
  const DWORD attributes = GetFileAttributesW(Wide(LongPathOf(path)));
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0)
    return false;
  // A link keeps the attribute when its target is gone; opening follows it.
  return (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0 || OpenFolder(path);
}

bool MakeFolder(std::u16string_view path) {
  if (!IsReachedByLink(path) && CreateDirectoryW(Wide(LongPathOf(path)), nullptr)) return true;
  if (IsExistingFolder(path)) return true;
  ForgetKnownFolders();
  return false;
}

std::optional<std::string> ReadFileBytes(std::u16string_view path, uint64_t limit) {
  const UniqueFile file = OpenPath(path, GENERIC_READ, OPEN_EXISTING);
  if (!file) return std::nullopt;
  const std::optional<uint64_t> size = SizeOf(file.Get());
  if (!size || *size > limit) return std::nullopt;
  std::string bytes(static_cast<size_t>(*size) + 1, '\0');
  size_t used = 0;
  for (;;) {
    DWORD count = 0;
    const auto piece = static_cast<DWORD>(std::min(bytes.size() - used, kMostAtOnce));
    if (!ReadFile(file.Get(), bytes.data() + used, piece, &count, nullptr)) return std::nullopt;
    used += count;
    if (used > limit) return std::nullopt;
    if (count == 0) break;
    if (used == bytes.size()) bytes.resize(used + kReadAhead);  // it grows while it is read
  }
  bytes.resize(used);
  return bytes;
}

// Made anew it would be refused where it is hidden.
std::unique_ptr<RewritableFile> OpenForRewrite(std::u16string_view path) {
  UniqueFile file = OpenForWriting(path, GENERIC_WRITE, OPEN_ALWAYS);
  const std::optional<uint64_t> size = file ? SizeOf(file.Get()) : std::nullopt;
  if (!size) return nullptr;
  return std::make_unique<Win32File>(std::move(file), *size);
}

bool AppendFileBytes(std::u16string_view path, std::string_view bytes, std::string_view firstBytes) {
  const UniqueFile file =
      OpenForWriting(path, FILE_APPEND_DATA | FILE_READ_ATTRIBUTES | SYNCHRONIZE, OPEN_ALWAYS);
  if (!file) return false;
  const std::optional<uint64_t> size = SizeOf(file.Get());
  if (!size) return false;
  if (*size != 0) return WriteAll(file.Get(), bytes);
  return WriteAll(file.Get(), std::string(firstBytes).append(bytes));
}

bool RemoveFile(std::u16string_view path) { return DeleteFileW(Wide(LongPathOf(path))) != 0; }

uint32_t RenamePath(std::u16string_view from, std::u16string_view to) {
  const std::u16string longFrom = LongPathOf(from), longTo = LongPathOf(to);
  if (MoveFileW(Wide(longFrom), Wide(longTo))) return 0;
  const DWORD error = GetLastError();
  return error != 0 ? error : kErrorGeneralFailure;
}

std::string HostPathBytes(std::u16string_view path) { return ToUtf8(ResolveMappedPath(path)); }

std::u16string PathFromHost(std::string_view typed) {
  const std::u16string name = typed.empty() ? u"." : FromUtf8(typed);
  std::u16string path(MAX_PATH, u'\0');
  for (;;) {
    const DWORD length =
        GetFullPathNameW(Wide(name), static_cast<DWORD>(path.size()), Wide(path.data()), nullptr);
    const bool fits = length < path.size();
    path.resize(length);
    if (fits) break;
  }
  while (path.size() > 1 && path.back() == u'\\' && !path.ends_with(u":\\")) path.pop_back();
  return path;
}

}  // namespace quilmark
