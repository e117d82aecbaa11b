// Any bytes as the $MFT of a volume that is built into an index: the index keeps its invariants, holds
// each file of the table under its name, and gives every record a path.
#include <mutex>
#include <shared_mutex>

#include "index/ntfs_volume.h"
#include "index/usn_monitor.h"
#include "platform/ntfs/mft_enumeration.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "support/fuzz_input.h"
#include "support/mft_source.h"

using namespace quilmark;

namespace {

std::span<const std::byte> mft;  // of the input that runs

std::unique_ptr<VolumeDevice> OpenInput(std::u16string_view, VolumeAccess, uint32_t& error) {
  error = 0;
  return OpenRawNtfs(std::make_unique<MftSource>(mft));
}

struct NamedFile {
  uint64_t frn = 0, parentFrn = 0;
  std::u16string name;
};

std::vector<NamedFile> ListFiles() {
  std::vector<NamedFile> files;
  auto reader = OpenMft(std::make_unique<MftSource>(mft));
  MftEnumeration enumeration;
  std::u16string units;
  for (uint64_t number = 0; number < reader->recordCount; ++number) {
    const auto file = FileAt(*reader, enumeration, number);
    if (!file) continue;
    const auto name = NameUnits(file->record, units);
    files.push_back({file->record.frn, file->record.parentFrn, std::u16string(name)});
  }
  return files;
}

void CheckIndex(const VolumeIndex& volume) {
  const std::shared_lock lock(volume.indexLock);
  Require(FindBrokenInvariant(volume).empty());
  const auto files = ListFiles();
  // The root folder has its place in the tables whether or not the $MFT tells of it.
  Require(volume.records.size() >= files.size());
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    Require(BuildPath(volume, i).starts_with(u"N:"));
  }
  for (uint32_t i = 0; i < files.size(); ++i) {
    const FileRecord& record = volume.records[i];
    Require(record.frn == files[i].frn && record.parentFrn == files[i].parentFrn);
    Require(NameOf(record) == files[i].name.substr(0, NameOf(record).size()));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  mft = std::as_bytes(std::span(data, size));
  InstallVolumeOpener(OpenInput);
  VolumeIndex volume;
  const bool isBuilt = BuildNtfsVolume(volume, u"N:");
  StopMonitor(volume);
  if (isBuilt) CheckIndex(volume);
  // Given back here: the destructor would wait for a device of the system to be free.
  const std::scoped_lock lock(volume.deviceLock);
  volume.volumeHandle.reset();
  return 0;
}
