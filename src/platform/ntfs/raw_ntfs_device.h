// The control codes of an NTFS volume, answered from its raw bytes: an image, a block device, a volume
// handle that has no journal interface. Reads only; every byte may be damaged.
#pragma once

#include <atomic>
#include <memory>

#include "platform/byte_source.h"
#include "platform/volume_device.h"

namespace quilmark {

// Null if the bytes do not begin with an NTFS boot sector or the $MFT cannot be read.
//
// FSCTL_ENUM_USN_DATA gives one name for each base record in use. A volume without a change journal
// answers 1179 until FSCTL_CREATE_USN_JOURNAL, which gives it an empty one in memory; a journal on the
// volume is never deleted (error 19).
//
// Null as well once `cancelled`, where it is given, is set; it is not looked at after the call.
[[nodiscard]] std::unique_ptr<VolumeDevice> OpenRawNtfs(std::unique_ptr<ByteSource> source,
                                                        const std::atomic<bool>* cancelled = nullptr);

}  // namespace quilmark
