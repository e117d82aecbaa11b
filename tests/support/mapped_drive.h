// A drive letter of a test.
#pragma once

#include <stdexcept>
#include <string_view>

#include "platform/drives.h"

namespace quilmark {

// Maps the letter to a folder for its own lifetime.
class MappedDrive {
 public:
  MappedDrive(char16_t letter, std::u16string_view root) : letter_(letter) {
    if (!MapDrive(letter, root)) throw std::invalid_argument("no drive letter");
  }
  ~MappedDrive() { UnmapDrive(letter_); }
  MappedDrive(const MappedDrive&) = delete;
  MappedDrive& operator=(const MappedDrive&) = delete;

 private:
  char16_t letter_;
};

}  // namespace quilmark
