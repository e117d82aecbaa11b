// Numbers of 64 bits that must not be taken for one another: a cluster is no byte offset, and a record
// number is no file reference.
#pragma once

#include <compare>
#include <cstdint>

namespace quilmark {

// A number of one kind. `Kind` is any type, which need not be defined; it only tells the kinds apart.
// It is made of a bare number explicitly, compared with its own kind alone, and turned into a bare
// number by `.value`. The same bits and the same cost as uint64_t.
template <typename Kind>
struct DistinctNumber {
  uint64_t value = 0;

  constexpr DistinctNumber() = default;  // the number 0
  constexpr explicit DistinctNumber(uint64_t number) : value(number) {}
  friend constexpr auto operator<=>(const DistinctNumber&, const DistinctNumber&) = default;
};

}  // namespace quilmark
