// Drive N: of a program that runs for long: an NTFS volume without a disk, whose files come, are
// renamed, are written to and go for ever.
#pragma once

#include <cstdint>

namespace quilmark {

// Before the program starts to index. The number of files stays; `changesPerSecond` are due at any time
// since.
void MapChurnDrive(uint32_t changesPerSecond);

}  // namespace quilmark
