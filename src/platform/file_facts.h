// Size and times of a file.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/clock.h"

namespace quilmark {

// What a disk or the records of a volume tell of a file.
struct FileFacts {
  uint64_t size = 0;      // bytes; 0 for a folder
  FileTime modified = 0;  // last write
  FileTime created = 0;   // birth, where the file system keeps it, else the earliest time known
  bool isDirectory = false;
};

// Of a path of files.h, without opening it and without following a link. Empty where there is none.
[[nodiscard]] std::optional<FileFacts> ReadFileFacts(std::u16string_view path);

}  // namespace quilmark
