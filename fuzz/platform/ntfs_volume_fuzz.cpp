// Any bytes as the $MFT of a volume: every control code ends, keeps to its output, and the enumeration
// gives records in ascending order that a parser takes; sizes and dates of each are numbers that can be
// shown.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/bytes.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "platform/usn_record.h"

using namespace quilmark;

namespace {

constexpr uint64_t kClusterBytes = 4'096, kMftCluster = 4;

// A boot sector of a volume as large as the input, and the input from the fourth cluster on. The first
// record's runs say where the $MFT is: a seed has it at its own clusters, which mostly lie elsewhere, so
// everything outside is read from the input again.
class FuzzSource : public ByteSource {
 public:
  explicit FuzzSource(std::span<const std::byte> mft) : mft_(mft), boot_(512) {
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
  size_t ReadAt(uint64_t offset, std::span<std::byte> buffer) override {
    for (size_t i = 0; i < buffer.size(); ++i) buffer[i] = ByteAt(offset + i);
    return buffer.size();
  }

 private:
  std::byte ByteAt(uint64_t at) const {
    if (at < boot_.size()) return boot_[at];
    if (mft_.empty()) return std::byte{0};
    return mft_[(at - kMftCluster * kClusterBytes) % mft_.size()];
  }

  std::span<const std::byte> mft_;
  std::vector<std::byte> boot_;
};

template <typename Input>
VolumeDevice::Reply Ask(VolumeDevice& device, uint32_t code, const Input& input,
                        std::span<std::byte> output) {
  const auto reply = device.Control(code, std::as_bytes(std::span(input)), output);
  if (reply.bytes > output.size()) std::abort();
  return reply;
}

void ReadFacts(VolumeDevice& device, uint64_t reference) {
  const auto facts = device.ReadFacts(reference);
  if (!facts) return;
  if (std::max({facts->size, facts->modified, facts->created}) > INT64_MAX) std::abort();
  if (facts->isDirectory && facts->size != 0) std::abort();
}

void Enumerate(VolumeDevice& device) {
  std::array<uint64_t, 3> range = {0, 0, INT64_MAX};
  std::vector<std::byte> block(4'096);
  uint64_t before = 0;
  for (;;) {
    const auto reply = Ask(device, kFsctlEnumUsnData, range, block);
    if (reply.error != 0) return;
    UsnCursor cursor{.block = std::span(block).first(reply.bytes)};
    while (const auto record = NextUsnRecord(cursor)) {
      const uint64_t number = (record->frn & 0xFFFF'FFFF'FFFF) + 1;
      if (number <= before) std::abort();
      before = number;
      ReadFacts(device, record->frn);
    }
    if (cursor.malformed) std::abort();
    const auto next = LoadLe<uint64_t>(block, 0);
    if (next <= range[0] || next < before) std::abort();
    range[0] = next;
  }
}

void ReadJournal(VolumeDevice& device) {
  std::vector<std::byte> data(56), block(4'096);
  if (Ask(device, kFsctlQueryUsnJournal, std::array<uint64_t, 0>(), data).error != 0) return;
  std::array<uint64_t, 5> from = {LoadLe<uint64_t>(data, 8), 0xFFFF'FFFF, 0, 0,
                                  LoadLe<uint64_t>(data, 0)};
  for (int i = 0; i < 64; ++i) {
    const auto reply = Ask(device, kFsctlReadUsnJournal, from, block);
    if (reply.error != 0 || reply.bytes <= 8) return;
    UsnCursor cursor{.block = std::span(block).first(reply.bytes)};
    while (NextUsnRecord(cursor)) continue;
    if (cursor.malformed) std::abort();
    from[0] = LoadLe<uint64_t>(block, 0);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const auto device = OpenRawNtfs(std::make_unique<FuzzSource>(std::as_bytes(std::span(data, size))));
  if (device == nullptr) return 0;
  std::vector<std::byte> output(2'048);
  Ask(*device, kFsctlGetNtfsVolumeData, std::array<uint64_t, 0>(), output);
  Ask(*device, kFsctlGetNtfsFileRecord, std::array<uint64_t, 1>{30}, output);
  Ask(*device, kFsctlCreateUsnJournal, std::array<uint64_t, 2>(), {});
  Enumerate(*device);
  ReadJournal(*device);
  return 0;
}
