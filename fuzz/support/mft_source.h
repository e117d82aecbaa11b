// A volume around bytes that stand for its $MFT.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#include "platform/byte_source.h"
#include "platform/bytes.h"

namespace quilmark {

// A boot sector of a volume as large as the input, and the input from the fourth cluster on. The first
// record's runs say where the $MFT is: a seed has it at its own clusters, which mostly lie elsewhere, so
// everything outside is read from the input again.
class MftSource : public ByteSource {
 public:
  explicit MftSource(std::span<const std::byte> mft) : mft_(mft), boot_(512) {
    std::memcpy(boot_.data() + 3, "NTFS    ", 8);
    StoreLe(std::span(boot_), 11, uint16_t{512});
    StoreLe(std::span(boot_), 13, uint8_t{8});
    StoreLe(std::span(boot_), 40, uint64_t{1} << 20);
    StoreLe(std::span(boot_), 48, kMftCluster);
    StoreLe(std::span(boot_), 56, kMftCluster);
    StoreLe(std::span(boot_), 64, uint8_t{0xF6});
    StoreLe(std::span(boot_), 68, uint8_t{1});
    StoreLe(std::span(boot_), 510, uint16_t{0xAA55});
  }
  uint64_t Size() const override { return kMftCluster * kClusterBytes + mft_.size(); }
  size_t ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    for (size_t done = 0; done < buffer.size();) {
      const auto stretch = StretchAt(offset.value + done);
      const size_t count = std::min(stretch.size(), buffer.size() - done);
      std::copy_n(stretch.begin(), count, buffer.begin() + static_cast<ptrdiff_t>(done));
      done += count;
    }
    return buffer.size();
  }

 private:
  static constexpr uint64_t kClusterBytes = 4'096, kMftCluster = 4;

  std::span<const std::byte> StretchAt(uint64_t at) const {
    if (at < boot_.size()) return std::span(boot_).subspan(static_cast<size_t>(at));
    if (mft_.empty()) return zeros_;
    return mft_.subspan(static_cast<size_t>((at - kMftCluster * kClusterBytes) % mft_.size()));
  }

  std::span<const std::byte> mft_;
  std::vector<std::byte> boot_;
  std::array<std::byte, 512> zeros_{};
};

}  // namespace quilmark
