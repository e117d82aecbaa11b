// Places of bytes on a volume, in an image, or in any other source of bytes.
#pragma once

#include "platform/distinct_number.h"

namespace quilmark {

// Bytes from the start of a ByteSource or of a volume. An offset within a stream is a StreamOffset
// (ntfs/places.h).
using ByteOffset = DistinctNumber<struct ByteOffsetKind>;
static_assert(sizeof(ByteOffset) == 8);

// The place `bytes` behind `offset`. REQUIRES a sum below 2^64.
constexpr ByteOffset operator+(ByteOffset offset, uint64_t bytes) {
  return ByteOffset(offset.value + bytes);
}

}  // namespace quilmark
