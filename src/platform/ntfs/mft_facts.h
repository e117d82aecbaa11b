// Size and dates of a file out of its FILE records.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/file_facts.h"
#include "platform/ntfs/mft_reader.h"

namespace quilmark {

// Of the file that `reference` names: the logical size of its unnamed $DATA, whichever record holds
// that, and the dates of its $STANDARD_INFORMATION; a date that no calendar reaches is 0. Empty where
// another file has the record by now, and where a record that tells of it is damaged or cannot be read.
std::optional<FileFacts> ReadMftFacts(MftReader& reader, uint64_t reference);

}  // namespace quilmark
