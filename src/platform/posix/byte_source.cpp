#include "platform/byte_source.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "platform/posix/host_path.h"

namespace quilmark {

namespace {

class FileSource : public ByteSource {
 public:
  explicit FileSource(UniqueFd file) : file_(std::move(file)) {
    // A block device has its size at its end too.
    const off_t end = lseek(file_.Get(), 0, SEEK_END);
    size_ = end > 0 ? static_cast<uint64_t>(end) : 0;
  }

  uint64_t Size() const override { return size_; }

  size_t ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    size_t done = 0;
    while (done < buffer.size()) {
      const ssize_t count = pread(file_.Get(), buffer.data() + done, buffer.size() - done,
                                  static_cast<off_t>(offset.value + done));
      if (count < 0 && errno == EINTR) continue;
      if (count <= 0) break;
      done += static_cast<size_t>(count);
    }
    return done;
  }

 private:
  UniqueFd file_;
  uint64_t size_ = 0;
};

}  // namespace

std::unique_ptr<ByteSource> OpenByteSource(std::u16string_view path) {
  UniqueFd file = EndOfPath(HostBytesOf(path)).Open(O_RDONLY);
  if (!file) return nullptr;
  return std::make_unique<FileSource>(std::move(file));
}

std::unique_ptr<ByteSource> OpenForReaders(std::u16string_view path) {
  // Does not wait for the other end of a pipe.
  UniqueFd file = EndOfPath(HostBytesOf(path)).Open(O_RDONLY | O_NONBLOCK | O_NOCTTY);
  struct stat status;
  if (!file || fstat(file.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  return std::make_unique<FileSource>(std::move(file));
}

}  // namespace quilmark
