// Any bytes as the $MFT of a volume: every control code ends, keeps to its output, and the enumeration
// gives records in ascending order that a parser takes; sizes and dates of each are numbers that can be
// shown.
#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "platform/usn_record.h"
#include "support/mft_source.h"

using namespace quilmark;

namespace {

template <typename Input>
VolumeDevice::Reply Ask(VolumeDevice& device, uint32_t code, const Input& input,
                        std::span<std::byte> output) {
  const auto reply = device.Control(code, std::as_bytes(std::span(input)), output);
  if (reply.bytes > output.size()) std::abort();
  return reply;
}

void ReadFacts(VolumeDevice& device, FileReference reference) {
  const auto facts = device.ReadFacts(reference);
  if (!facts) return;
  if (std::max({facts->size, facts->modified, facts->created}) > INT64_MAX) std::abort();
  if (facts->isDirectory && facts->size != 0) std::abort();
}

void CheckRest(VolumeDevice& device) {
  const uint32_t unknown = Ask(device, 0, std::array<uint64_t, 1>(), {}).error;
  if (unknown != kErrorInvalidFunction) std::abort();
  std::array<std::byte, 16> bytes;
  if (device.ReadAt(ByteOffset(3), bytes).bytes != bytes.size() || bytes[0] != std::byte{'N'})
    std::abort();
  // A journal of the volume stays; one that was made in memory goes, once.
  const uint32_t first = Ask(device, kFsctlDeleteUsnJournal, std::array<uint64_t, 2>(), {}).error;
  const uint32_t second = Ask(device, kFsctlDeleteUsnJournal, std::array<uint64_t, 2>(), {}).error;
  const bool isKept = first == kErrorWriteProtect && second == kErrorWriteProtect;
  if (!isKept && (first != 0 || second != kErrorJournalNotActive)) std::abort();
  if (device.Close() != 0 || device.ReadAt(ByteOffset(3), bytes).error != kErrorInvalidHandle)
    std::abort();
  if (device.ReadFacts(FileReference(0)) ||
      Ask(device, kFsctlEnumUsnData, bytes, {}).error != kErrorInvalidHandle) {
    std::abort();
  }
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
      const uint64_t number = RecordNumberOf(record->frn).value + 1;
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
  const auto device = OpenRawNtfs(std::make_unique<MftSource>(std::as_bytes(std::span(data, size))));
  if (device == nullptr) return 0;
  std::vector<std::byte> output(2'048);
  Ask(*device, kFsctlGetNtfsVolumeData, std::array<uint64_t, 0>(), output);
  Ask(*device, kFsctlGetNtfsFileRecord, std::array<uint64_t, 1>{30}, output);
  Ask(*device, kFsctlCreateUsnJournal, std::array<uint64_t, 2>(), {});
  Enumerate(*device);
  ReadJournal(*device);
  CheckRest(*device);
  return 0;
}
