// What the fuzz targets share: the test of an invariant, and an input taken apart from its front.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

namespace quilmark {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

// Bytes of an input. What is not there any more reads as zeros or as nothing.
struct FuzzInput {
  std::span<const std::byte> rest;

  std::span<const std::byte> TakeBytes(size_t count) {
    const auto taken = rest.first(std::min(count, rest.size()));
    rest = rest.subspan(taken.size());
    return taken;
  }

  // Little-endian.
  template <typename Number>
  Number Take() {
    Number number = 0;
    const auto bytes = TakeBytes(sizeof number);
    if (!bytes.empty()) std::memcpy(&number, bytes.data(), bytes.size());
    return number;
  }

  // Up to the next line end, which is taken too.
  std::string TakeLine() {
    const auto end = std::find(rest.begin(), rest.end(), std::byte{'\n'});
    const auto line = TakeBytes(static_cast<size_t>(end - rest.begin()));
    TakeBytes(1);
    return std::string(reinterpret_cast<const char*>(line.data()), line.size());
  }

  std::string_view RestAsText() const {
    return {reinterpret_cast<const char*>(rest.data()), rest.size()};
  }
};

inline FuzzInput InputOf(const uint8_t* data, size_t size) {
  return {std::as_bytes(std::span(data, size))};
}

// UTF-16LE; an odd last byte is left out.
inline std::u16string UnitsOf(std::span<const std::byte> bytes) {
  std::u16string units(bytes.size() / sizeof(char16_t), u'\0');
  if (!units.empty()) std::memcpy(units.data(), bytes.data(), units.size() * sizeof(char16_t));
  return units;
}

// True if `part` lies within `whole`; an empty one may lie anywhere.
inline bool LiesWithin(std::span<const std::byte> part, std::span<const std::byte> whole) {
  return part.empty() ||
         (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size());
}

}  // namespace quilmark
