// Size and dates of a file out of its FILE records.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "platform/file_facts.h"
#include "platform/ntfs/mft_reader.h"

namespace quilmark {

// Of the file that `reference` names: the logical size of its unnamed $DATA, whichever record holds
// that, and the dates of its $STANDARD_INFORMATION; a date that no calendar reaches is 0. Empty where
// another file has the record by now, and where a record that tells of it is damaged or cannot be read.
[[nodiscard]] std::optional<FileFacts> ReadMftFacts(MftReader& reader, FileReference reference);

// Of the unnamed $DATA.
struct DataSizes {
  uint64_t logical = 0, allocated = 0;  // bytes
};

// Sizes by the file's base record alone, as FSCTL_GET_NTFS_FILE_RECORD gives it:
// with its fix-ups applied or not. Both 0 where it has none. Empty where another file has the record by
// now, where the record is damaged, and where another record holds the $DATA.
[[nodiscard]] std::optional<DataSizes> SizesInRecord(std::span<const std::byte> record,
                                                     FileReference reference);

}  // namespace quilmark
