// Little-endian numbers and text in foreign bytes.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>

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

// UTF-16LE at any alignment into `units`, whose memory a loop reuses; an odd last byte is left out.
inline void LoadUnits(std::span<const std::byte> bytes, std::u16string& units) {
  units.resize(bytes.size() / sizeof(char16_t));
  if (!units.empty()) std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
}

}  // namespace quilmark
