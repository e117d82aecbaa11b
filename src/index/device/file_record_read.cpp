#include "index/device/file_record_read.h"

#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/ntfs/mft_record.h"

namespace quilmark {

// NTFS_FILE_RECORD_OUTPUT_BUFFER (winioctl.h): byte offsets.
static constexpr size_t kFoundReference = 0, kRecord = 12;

FileRecordRead ReadFileRecord(VolumeDevice& device, uint64_t frn, std::span<std::byte> scratch) {
  const uint64_t number = RecordNumberOf(frn);
  const auto reply =
      device.Control(kFsctlGetNtfsFileRecord, std::as_bytes(std::span(&number, 1)), scratch);
  if (reply.error != 0 || reply.bytes <= kRecord) return {};
  // Of a record that is not in use the next lower one is answered.
  if (RecordNumberOf(LoadLe<uint64_t>(scratch, kFoundReference)) != number) {
    return {.state = FileState::kGone};
  }
  const std::span<const std::byte> record = scratch.first(reply.bytes).subspan(kRecord);
  const auto header = ParseRecordHeader(record);
  if (!header) return {};
  const bool isThatFile = header->inUse && header->sequence == SequenceOf(frn);
  if (!isThatFile) return {.state = FileState::kGone};
  return {.state = FileState::kThere, .record = record};
}

}  // namespace quilmark
