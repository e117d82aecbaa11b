// The FILE record of one file, through the volume's device.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "platform/volume_device.h"

namespace quilmark {

// What the volume says of a file: it is there, it is gone, or the volume did not answer.
enum class FileState { kThere, kGone, kUnknown };

// The answer of one read.
struct FileRecordRead {
  FileState state = FileState::kUnknown;
  std::span<const std::byte> record;  // in the scratch; where the file is there
};

// Whether the record that `frn` names is in use under its sequence number. `scratch` has room for the
// largest FILE record and 12 bytes; the record that is returned lies in it. No lock is held: the call
// waits for the disk.
[[nodiscard]] FileRecordRead ReadFileRecord(VolumeDevice& device, uint64_t frn,
                                            std::span<std::byte> scratch);

}  // namespace quilmark
