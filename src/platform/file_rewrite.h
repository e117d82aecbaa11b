// A file that is being rewritten on its own name, as a system gives it. What is written in which order
// stands in file_rewrite.cpp.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>

namespace quilmark {

// One thread. The destructor closes it.
struct RewritableFile {
  virtual ~RewritableFile() = default;
  uint64_t sizeBytes = 0;  // when it was opened

  virtual bool WriteAt(uint64_t offset, std::string_view bytes) = 0;  // all of them
  virtual bool Cut(uint64_t length) = 0;
  virtual bool Flush() = 0;  // to the disk
};

// Opens or makes it, with its contents as they are. Null if that fails, and for what is no file.
std::unique_ptr<RewritableFile> OpenForRewrite(std::u16string_view path);

}  // namespace quilmark
