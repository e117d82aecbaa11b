// A file that is being rewritten on its own name, as a system gives it. What is written in which order
// stands in file_rewrite.cpp.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace quilmark {

// One thread. The destructor closes it.
struct RewritableFile {
  virtual ~RewritableFile() = default;  // closes it
  uint64_t sizeBytes = 0;               // when it was opened

  // Writes all of `bytes` at byte `offset`. False if any of them could not be written.
  [[nodiscard]] virtual bool WriteAt(uint64_t offset, std::string_view bytes) = 0;

  // Makes the file `length` bytes long. False on failure, which may be dropped where the writing has
  // failed already.
  virtual bool Cut(uint64_t length) = 0;

  // Waits until the disk has what was written. False on failure; true as well where the file system
  // knows no such thing, and nothing was waited for.
  [[nodiscard]] virtual bool Flush() = 0;
};

// Opens or makes it, with its contents as they are. Null if that fails, and for what is no file.
[[nodiscard]] std::unique_ptr<RewritableFile> OpenForRewrite(std::u16string_view path);

}  // namespace quilmark
