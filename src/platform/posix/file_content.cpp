#include "platform/file_content.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string>
#include <string_view>

#include "platform/posix/host_path.h"

namespace quilmark {

namespace {

constexpr std::string_view kDevices = "/dev/";  // opening one may be what makes it act

// Reading costs less than mapping for files of any size that stay in a buffer within the processor's
// caches, and a file that another program cuts short meanwhile ends it by no signal.
class PosixContent : public FileContent {
 public:
  explicit PosixContent(LinksOfFiles links)
      : flags_(O_RDONLY | O_NONBLOCK | O_NOCTTY | (links == LinksOfFiles::kRefused ? O_NOFOLLOW : 0)) {}

  ContentOpening Open(std::u16string_view path) override {
    file_.Reset();
    const std::string host = HostBytesOf(path);
    if (host.starts_with(kDevices)) return ContentOpening::kNoFile;
    file_ = EndOfPath(host).Open(flags_);
    if (file_) return KeepIfPlain();
    const bool isRefusedLink = errno == ELOOP && (flags_ & O_NOFOLLOW) != 0;
    return isRefusedLink ? ContentOpening::kLink : ContentOpening::kCannotOpen;
  }

  std::optional<uint64_t> Size() override {
    struct stat status;
    if (fstat(file_.Get(), &status) != 0) return std::nullopt;
    return static_cast<uint64_t>(status.st_size);
  }

  bool HasViews() const override { return false; }
  std::optional<std::span<const char>> View() override { return std::nullopt; }
  bool Look(void (*look)(void*), void* subject) override {
    look(subject);
    return true;
  }

  // One call of the system is enough where it gives fewer bytes: that is the end of a plain file.
  std::optional<size_t> Read(std::span<char> buffer) override {
    for (;;) {
      const ssize_t count = read(file_.Get(), buffer.data(), buffer.size());
      if (count >= 0) return static_cast<size_t>(count);
      if (errno != EINTR) return std::nullopt;
    }
  }

  void Close() override { file_.Reset(); }

 private:
  // What is read from a pipe is lost to its reader.
  ContentOpening KeepIfPlain() {
    struct stat status;
    if (fstat(file_.Get(), &status) == 0 && S_ISREG(status.st_mode)) return ContentOpening::kOpened;
    file_.Reset();
    return ContentOpening::kNoFile;
  }

  const int flags_;
  UniqueFd file_;
};

}  // namespace

std::unique_ptr<FileContent> MakeFileContent(LinksOfFiles links) {
  return std::make_unique<PosixContent>(links);
}

void WarmFileContent(std::u16string_view path, uint64_t most) {
  PosixContent content(LinksOfFiles::kFollowed);
  if (content.Open(path) != ContentOpening::kOpened) return;
  std::array<char, 128 * 1024> buffer;
  for (uint64_t done = 0; done < most;) {
    const auto count = content.Read(buffer);
    if (!count || *count < buffer.size()) return;
    done += *count;
  }
}

}  // namespace quilmark
