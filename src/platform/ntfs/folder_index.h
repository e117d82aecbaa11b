// The index of a folder: names in it, by its B+ tree's blocks in the order in which they lie.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/ntfs/mft_reader.h"

namespace quilmark {

// The reference of `name`, which must be ASCII and is compared without regard to case, in the folder of
// record `folder`. Empty if it is not there, or stands in a block that is damaged.
[[nodiscard]] std::optional<FileReference> FindInFolder(MftReader& reader, RecordNumber folder,
                                                        std::u16string_view name);

}  // namespace quilmark
