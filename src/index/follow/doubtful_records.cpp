#include "index/follow/doubtful_records.h"

#include "index/device/file_record_read.h"

namespace quilmark {

std::vector<uint64_t> AskWhatIsGone(VolumeIndex& volume, VolumeDevice& device,
                                    std::span<std::byte> scratch, const std::atomic<bool>& wanted) {
  std::vector<uint64_t> gone;
  for (auto next = volume.inDoubt.begin(); next != volume.inDoubt.end() && wanted;) {
    const auto each = next++;
    const bool isGone = ReadFileRecord(device, each->first, scratch).state == FileState::kGone;
    if (isGone) gone.push_back(each->first);
    if (isGone || --each->second == 0) volume.inDoubt.erase(each);
  }
  return gone;
}

}  // namespace quilmark
