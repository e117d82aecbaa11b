#include "index/doubtful_records.h"

#include "platform/bytes.h"
#include "platform/file_reference.h"
#include "platform/ntfs/mft_record.h"

namespace quilmark {

namespace {

// NTFS_FILE_RECORD_OUTPUT_BUFFER (winioctl.h): byte offsets.
constexpr size_t kFoundReference = 0, kRecord = 12;

}  // namespace

FileState AskFileState(VolumeDevice& device, uint64_t frn, std::span<std::byte> scratch) {
  const uint64_t number = RecordNumberOf(frn);
  const auto reply =
      device.Control(kFsctlGetNtfsFileRecord, std::as_bytes(std::span(&number, 1)), scratch);
  if (reply.error != 0 || reply.bytes <= kRecord) return FileState::kUnknown;
  // Of a record that is not in use the next lower one is answered.
  if (RecordNumberOf(LoadLe<uint64_t>(scratch, kFoundReference)) != number) return FileState::kGone;
  const auto header = ParseRecordHeader(scratch.first(reply.bytes).subspan(kRecord));
  if (!header) return FileState::kUnknown;
  const bool isThatFile = header->inUse && header->sequence == SequenceOf(frn);
  return isThatFile ? FileState::kThere : FileState::kGone;
}

std::vector<uint64_t> AskWhatIsGone(VolumeIndex& volume, VolumeDevice& device,
                                    std::span<std::byte> scratch, const std::atomic<bool>& wanted) {
  std::vector<uint64_t> gone;
  for (auto next = volume.inDoubt.begin(); next != volume.inDoubt.end() && wanted;) {
    const auto each = next++;
    const bool isGone = AskFileState(device, each->first, scratch) == FileState::kGone;
    if (isGone) gone.push_back(each->first);
    if (isGone || --each->second == 0) volume.inDoubt.erase(each);
  }
  return gone;
}

}  // namespace quilmark
