// Places on an NTFS volume and in its streams, by cluster and by byte. Each is a type of its own, and
// one becomes another by the functions below alone, which refuse what would wrap.
#pragma once

#include <optional>

#include "platform/byte_offset.h"

namespace quilmark {

// A cluster of the volume, counted from its first ("LCN" in NTFS).
using ClusterNumber = DistinctNumber<struct ClusterNumberKind>;

// A cluster of a stream, counted from its first, wherever it lies on the volume ("VCN" in NTFS).
using StreamCluster = DistinctNumber<struct StreamClusterKind>;

// How many clusters.
using ClusterCount = DistinctNumber<struct ClusterCountKind>;

// Bytes from the start of a stream. A USN is one, in the stream that holds the change journal.
using StreamOffset = DistinctNumber<struct StreamOffsetKind>;

static_assert(sizeof(ClusterNumber) == 8 && sizeof(StreamCluster) == 8 && sizeof(ClusterCount) == 8 &&
              sizeof(StreamOffset) == 8);

// NTFS has signed offsets of 64 bits. With one bit less the sum of two cannot wrap either, and no volume
// comes near: NTFS stops at 8 PiB, which is 2^53.
inline constexpr uint64_t kMostOffset = uint64_t{1} << 62;

// The place `bytes` behind `offset`. REQUIRES a sum below 2^64.
constexpr StreamOffset operator+(StreamOffset offset, uint64_t bytes) {
  return StreamOffset(offset.value + bytes);
}

// Bytes from `from` to `to`. REQUIRES from <= to
constexpr uint64_t BytesBetween(StreamOffset from, StreamOffset to) { return to.value - from.value; }

// `count` clusters of `clusterBytes` in bytes. Empty above kMostOffset. REQUIRES clusterBytes != 0
[[nodiscard]] constexpr std::optional<uint64_t> BytesOf(ClusterCount count, uint32_t clusterBytes) {
  if (count.value > kMostOffset / clusterBytes) return std::nullopt;
  return count.value * clusterBytes;
}

// Where `cluster` begins on the volume. Empty above kMostOffset. REQUIRES clusterBytes != 0
[[nodiscard]] constexpr std::optional<ByteOffset> OffsetOf(ClusterNumber cluster,
                                                           uint32_t clusterBytes) {
  const auto bytes = BytesOf(ClusterCount(cluster.value), clusterBytes);
  return bytes ? std::optional(ByteOffset(*bytes)) : std::nullopt;
}

// Where `cluster` begins in its stream. Empty above kMostOffset. REQUIRES clusterBytes != 0
[[nodiscard]] constexpr std::optional<StreamOffset> OffsetOf(StreamCluster cluster,
                                                             uint32_t clusterBytes) {
  const auto bytes = BytesOf(ClusterCount(cluster.value), clusterBytes);
  return bytes ? std::optional(StreamOffset(*bytes)) : std::nullopt;
}

// The cluster `count` behind `cluster`. Empty where that wraps.
[[nodiscard]] constexpr std::optional<StreamCluster> ClusterBehind(StreamCluster cluster,
                                                                   ClusterCount count) {
  const uint64_t sum = cluster.value + count.value;
  return sum >= cluster.value ? std::optional(StreamCluster(sum)) : std::nullopt;
}

}  // namespace quilmark
