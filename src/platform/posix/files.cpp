#include "platform/files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdio>

#include "platform/file_rewrite.h"
#include "platform/posix/host_path.h"
#include "platform/utf.h"
#include "platform/volume_device.h"

namespace quilmark {

namespace {

constexpr mode_t kNewFolderMode = 0777;  // the user's mask takes its part
constexpr size_t kReadAhead = 64 * 1024;

struct OpenFile {
  UniqueFd fd;
  uint64_t sizeBytes = 0;
};

// Empty for anything but a regular file. Does not wait for the other end of a pipe.
std::optional<OpenFile> OpenRegularFile(std::u16string_view path, int flags) {
  OpenFile file{EndOfPath(HostBytesOf(path)).Open(flags | O_NONBLOCK | O_NOCTTY)};
  struct stat status;
  if (!file.fd || fstat(file.fd.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  file.sizeBytes = static_cast<uint64_t>(status.st_size);
  return file;
}

bool WriteAll(int fd, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = write(fd, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<size_t>(written));
  }
  return true;
}

class PosixFile : public RewritableFile {
 public:
  explicit PosixFile(OpenFile file) : fd_(std::move(file.fd)) { sizeBytes = file.sizeBytes; }

  bool WriteAt(uint64_t offset, std::string_view bytes) override {
    while (!bytes.empty()) {
      const ssize_t written = pwrite(fd_.Get(), bytes.data(), bytes.size(), static_cast<off_t>(offset));
      if (written < 0 && errno == EINTR) continue;
      if (written <= 0) return false;
      bytes.remove_prefix(static_cast<size_t>(written));
      offset += static_cast<uint64_t>(written);
    }
    return true;
  }
  bool Cut(uint64_t length) override { return ftruncate(fd_.Get(), static_cast<off_t>(length)) == 0; }
  // A file system without such a thing has done what it can.
  bool Flush() override { return fsync(fd_.Get()) == 0 || errno == EINVAL || errno == ENOTSUP; }

 private:
  UniqueFd fd_;
};

std::string CurrentFolder() {
  std::string folder(PATH_MAX, '\0');
  while (getcwd(folder.data(), folder.size()) == nullptr) {
    if (errno != ERANGE) return {};
    folder.resize(folder.size() * 2);
  }
  folder.resize(folder.find('\0'));
  return folder;
}

}  // namespace

bool IsExistingPath(std::u16string_view path) {
  const PathEnd end = EndOfPath(HostBytesOf(path));
  struct stat status;
  return fstatat(end.folder, end.name, &status, AT_SYMLINK_NOFOLLOW) == 0;
}

bool IsMissingPath(std::u16string_view path) {
  const PathEnd end = EndOfPath(HostBytesOf(path));
  struct stat status;
  if (fstatat(end.folder, end.name, &status, AT_SYMLINK_NOFOLLOW) == 0) return false;
  return errno == ENOENT || errno == ENOTDIR;
}

bool IsExistingFolder(std::u16string_view path) {
  const PathEnd end = EndOfPath(HostBytesOf(path));
  struct stat status;
  return fstatat(end.folder, end.name, &status, 0) == 0 && S_ISDIR(status.st_mode);
}

bool MakeFolder(std::u16string_view path) {
  const PathEnd end = EndOfPath(HostBytesOf(path));
  return mkdirat(end.folder, end.name, kNewFolderMode) == 0 || IsExistingFolder(path);
}

std::optional<std::string> ReadFileBytes(std::u16string_view path, uint64_t limit) {
  const std::optional<OpenFile> file = OpenRegularFile(path, O_RDONLY);
  if (!file || file->sizeBytes > limit) return std::nullopt;
  std::string bytes;
  size_t used = 0;
  // The size is a hint: files of /proc have none, and a log grows while it is read.
  bytes.resize(static_cast<size_t>(file->sizeBytes) + 1);
  for (;;) {
    const ssize_t count = read(file->fd.Get(), bytes.data() + used, bytes.size() - used);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    used += static_cast<size_t>(count);
    if (used > limit) return std::nullopt;
    if (count == 0) break;
    if (used == bytes.size()) bytes.resize(used + kReadAhead);
  }
  bytes.resize(used);
  return bytes;
}

std::unique_ptr<RewritableFile> OpenForRewrite(std::u16string_view path) {
  std::optional<OpenFile> file = OpenRegularFile(path, O_WRONLY | O_CREAT);
  if (!file) return nullptr;
  return std::make_unique<PosixFile>(std::move(*file));
}

// Logs stand in folders that others may write to: no link is followed.
bool AppendFileBytes(std::u16string_view path, std::string_view bytes, std::string_view firstBytes) {
  const std::optional<OpenFile> file = OpenRegularFile(path, O_WRONLY | O_CREAT | O_APPEND | O_NOFOLLOW);
  if (!file) return false;
  if (file->sizeBytes != 0) return WriteAll(file->fd.Get(), bytes);
  return WriteAll(file->fd.Get(), std::string(firstBytes).append(bytes));
}

bool RemoveFile(std::u16string_view path) {
  const PathEnd end = EndOfPath(HostBytesOf(path));
  return unlinkat(end.folder, end.name, 0) == 0;
}

uint32_t RenamePath(std::u16string_view from, std::u16string_view to) {
  const std::string fromBytes = HostBytesOf(from), toBytes = HostBytesOf(to);
  const PathEnd old = EndOfPath(fromBytes), wanted = EndOfPath(toBytes);
  if (renameat2(old.folder, old.name, wanted.folder, wanted.name, RENAME_NOREPLACE) == 0) return 0;
  switch (errno) {
    case ENOENT:
      return kErrorFileNotFound;
    case EEXIST:
      return kErrorAlreadyExists;
    case EACCES:
    case EPERM:
    case EROFS:
      return kErrorAccessDenied;
    default:
      return kErrorGeneralFailure;
  }
}

std::string HostPathBytes(std::u16string_view path) {
  const std::string& bytes = HostBytesOf(path);
  if (!bytes.empty()) return bytes;
  // No path of this host: as it would be written here.
  std::string written;
  for (const char byte : ToHostBytes(path)) written.push_back(byte == '\\' ? '/' : byte);
  return written;
}

std::u16string PathFromHost(std::string_view typed) {
  if (typed.starts_with('/')) return PathOfHostBytes(typed);
  return PathOfHostBytes(CurrentFolder().append("/").append(typed));
}

}  // namespace quilmark
