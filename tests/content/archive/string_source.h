// An archive of a test in memory, which counts what is read of it.
#pragma once

#include <algorithm>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include "platform/byte_source.h"

namespace quilmark {

struct StringSource : ByteSource {
  explicit StringSource(std::string text) : bytes(std::move(text)) {}

  uint64_t Size() const override { return bytes.size(); }
  size_t ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    ++reads;
    if (onRead) onRead(offset.value);
    if (offset.value >= bytes.size()) return 0;
    const auto count = std::min<size_t>(buffer.size(), bytes.size() - offset.value);
    std::memcpy(buffer.data(), bytes.data() + offset.value, count);
    readBytes += count;
    return count;
  }

  std::string bytes;
  size_t reads = 0;
  uint64_t readBytes = 0;
  std::function<void(uint64_t offset)> onRead;  // before the bytes are given
};

}  // namespace quilmark
