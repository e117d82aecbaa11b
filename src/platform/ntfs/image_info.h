// What an NTFS image or partition says of itself.
#pragma once

#include <optional>
#include <string_view>

#include "platform/drives.h"

namespace quilmark {

// Of the file or block device at `path` (see files.h); empty unless it begins with an NTFS boot sector.
std::optional<VolumeInfo> VolumeInfoOfImage(std::u16string_view path);

}  // namespace quilmark
