#include "platform/byte_source.h"

#include <algorithm>
#include <cstring>
#include <vector>

#include "platform/win32/file_handle.h"

namespace quilmark {

namespace {

// A volume is read in whole sectors; no sector is larger.
constexpr uint64_t kAlignment = 4'096;

class FileSource : public ByteSource {
 public:
  explicit FileSource(UniqueFile file) : file_(std::move(file)) {
    LARGE_INTEGER size;
    if (GetFileSizeEx(file_.Get(), &size)) size_ = static_cast<uint64_t>(size.QuadPart);
  }

  uint64_t Size() const override { return size_; }

  size_t ReadAt(uint64_t offset, std::span<std::byte> buffer) override {
    if (offset % kAlignment == 0 && buffer.size() % kAlignment == 0) return ReadAligned(offset, buffer);
    const uint64_t start = offset / kAlignment * kAlignment;
    const uint64_t end = (offset + buffer.size() + kAlignment - 1) / kAlignment * kAlignment;
    aligned_.resize(static_cast<size_t>(end - start));
    const size_t got = ReadAligned(start, aligned_);
    const auto before = static_cast<size_t>(offset - start);
    if (got <= before) return 0;
    const size_t count = std::min(got - before, buffer.size());
    std::memcpy(buffer.data(), aligned_.data() + before, count);
    return count;
  }

 private:
  size_t ReadAligned(uint64_t offset, std::span<std::byte> buffer) {
    OVERLAPPED at{};
    at.Offset = static_cast<DWORD>(offset);
    at.OffsetHigh = static_cast<DWORD>(offset >> 32);
    DWORD got = 0;
    if (!ReadFile(file_.Get(), buffer.data(), static_cast<DWORD>(buffer.size()), &got, &at)) return 0;
    return got;
  }

  UniqueFile file_;
  uint64_t size_ = 0;
  std::vector<std::byte> aligned_;
};

}  // namespace

std::unique_ptr<ByteSource> OpenByteSource(std::u16string_view path) {
  UniqueFile file = OpenPath(path, GENERIC_READ, OPEN_EXISTING);
  if (!file) return nullptr;
  return std::make_unique<FileSource>(std::move(file));
}

}  // namespace quilmark
