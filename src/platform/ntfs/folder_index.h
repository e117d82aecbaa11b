// The index of a folder: names in it, by its B+ tree's blocks in the order in which they lie.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/ntfs/mft_reader.h"

namespace quilmark {

// The reference of `name`, which must be ASCII and is compared without regard to case, in the folder of
// record `folder`. Empty if it is not found: the search passes over a block that is damaged, and ends
// at one that cannot be read, behind 16 MiB of blocks, and once the reader is cancelled.
[[nodiscard]] std::optional<FileReference> FindInFolder(MftReader& reader, RecordNumber folder,
                                                        std::u16string_view name);

}  // namespace quilmark
