// What an NTFS image or partition says of itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/drives.h"

namespace quilmark {

// Of the file or block device at `path` (see files.h); empty unless it begins with an NTFS boot sector.
[[nodiscard]] std::optional<VolumeInfo> VolumeInfoOfImage(std::u16string_view path);

// Bytes that the volume of such an image has by its boot sector and that the image lacks; 0 for a whole
// one, and for what is no image.
uint64_t MissingBytesOfImage(std::u16string_view path);

}  // namespace quilmark
