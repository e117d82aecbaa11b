// Bytes at offsets: an image file, a block device, a raw volume, or memory in a test.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string_view>

#include "platform/byte_offset.h"

namespace quilmark {

// One thread at a time.
struct ByteSource {
  virtual ~ByteSource() = default;  // closes it

  // In bytes; 0 for a device that does not tell.
  virtual uint64_t Size() const = 0;

  // Fills `buffer` from byte `offset`. Returns how many bytes were read: fewer at the end or at a place
  // that cannot be read.
  [[nodiscard]] virtual size_t ReadAt(ByteOffset offset, std::span<std::byte> buffer) = 0;
};

// Opens a file or a block device for reading, by a path of files.h. Null if that fails.
[[nodiscard]] std::unique_ptr<ByteSource> OpenByteSource(std::u16string_view path);

// Opens a plain file, and shares it on Windows with those who read it alone: null where somebody may
// write it, and nobody may as long as it is open. Null as well if that fails, and for what is no plain
// file.
[[nodiscard]] std::unique_ptr<ByteSource> OpenForReaders(std::u16string_view path);

}  // namespace quilmark
