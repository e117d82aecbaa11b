#include "platform/byte_source.h"

#include <algorithm>
#include <vector>

#include "platform/sector_reads.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"

namespace quilmark {

namespace {

constexpr size_t kMostAtOnce = 1u << 30;  // bytes of one call

class FileSource : public ByteSource {
 public:
  // kSectors also reads what takes whole sectors alone, as raw volumes do.
  enum class Reads { kSectors, kAnyBytes };

  FileSource(UniqueFile file, Reads reads) : file_(std::move(file)), reads_(reads) {
    LARGE_INTEGER size;
    if (GetFileSizeEx(file_.Get(), &size)) size_ = static_cast<uint64_t>(size.QuadPart);
  }

  uint64_t Size() const override { return size_; }

  size_t ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    if (reads_ == Reads::kAnyBytes) return ReadWhole(offset.value, buffer);
    const auto read = [this](uint64_t at, std::span<std::byte> part) { return ReadOnce(at, part); };
    return ReadBySectors(read, offset.value, buffer, scratch_);
  }

 private:
  size_t ReadWhole(uint64_t offset, std::span<std::byte> buffer) {
    size_t done = 0;
    while (done < buffer.size()) {
      const auto piece = buffer.subspan(done, std::min(buffer.size() - done, kMostAtOnce));
      const size_t got = ReadOnce(offset + done, piece);
      done += got;
      if (got == 0) break;
    }
    return done;
  }

  size_t ReadOnce(uint64_t offset, std::span<std::byte> buffer) {
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(offset);
    at.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD got = 0;
    if (!ReadFile(file_.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), &got, &at)) return 0;
    return got;
  }

  UniqueFile file_;
  const Reads reads_;
  uint64_t size_ = 0;
  std::vector<std::byte> scratch_;
};

}  // namespace

std::unique_ptr<ByteSource> OpenByteSource(std::u16string_view path) {
  UniqueFile file = OpenPath(path, GENERIC_READ, OPEN_EXISTING);
  if (!file) return nullptr;
  return std::make_unique<FileSource>(std::move(file), FileSource::Reads::kSectors);
}

std::unique_ptr<ByteSource> OpenForReaders(std::u16string_view path) {
  UniqueFile file(CreateFileW(Wide(LongPathOf(path)), GENERIC_READ, FILE_SHARE_READ, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file || GetFileType(file.Get()) != FILE_TYPE_DISK) return nullptr;
  return std::make_unique<FileSource>(std::move(file), FileSource::Reads::kAnyBytes);
}

}  // namespace quilmark
