// Little-endian numbers in foreign bytes.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstring>
#include <span>

namespace quilmark {

// True when [offset, offset + length) lies within `size` bytes. Cannot wrap.
constexpr bool Fits(size_t size, size_t offset, size_t length) {
  return offset <= size && length <= size - offset;
}

// At any alignment. REQUIRES Fits(bytes.size(), offset, sizeof(T)).
template <std::integral T>
T LoadLe(std::span<const std::byte> bytes, size_t offset) {
  T value;
  std::memcpy(&value, bytes.data() + offset, sizeof value);
  return value;
}

// At any alignment. REQUIRES Fits(bytes.size(), offset, sizeof(T)).
template <std::integral T>
void StoreLe(std::span<std::byte> bytes, size_t offset, T value) {
  std::memcpy(bytes.data() + offset, &value, sizeof value);
}

}  // namespace quilmark
