#include "platform/volume_device.h"

#include "platform/drive_roots.h"
#include "platform/ntfs/raw_ntfs_device.h"

namespace quilmark {

std::unique_ptr<VolumeDevice> OpenVolumeDevice(std::u16string_view drive, VolumeAccess access,
                                               uint32_t& error) {
  error = kErrorFileNotFound;
  const auto root = drive.empty() ? nullptr : SharedRootOf(drive[0]);
  if (root == nullptr) return nullptr;
  // The raw bytes of a volume are never written.
  error = access == VolumeAccess::kReadWrite ? kErrorWriteProtect : kErrorInvalidFunction;
  if (access == VolumeAccess::kReadWrite) return nullptr;
  auto device = OpenRawNtfs(OpenByteSource(SystemPathOfRoot(*root)));
  if (device != nullptr) error = 0;
  return device;
}

}  // namespace quilmark
