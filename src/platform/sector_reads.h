// Reads at any place of what is read in whole sectors.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace quilmark {

// Fills a buffer from an offset, both in whole sectors, and returns how many bytes it read: fewer at the
// end, and none at all from some devices where any sector of the buffer is behind it or bad.
using SectorReader = std::function<size_t(uint64_t offset, std::span<std::byte> buffer)>;

// Fills `buffer` from byte `offset` by calls of `read` in blocks of 4,096 bytes, the largest sector
// there is; smaller ones are tried where a block does not come whole. Returns as ByteSource::ReadAt.
// `scratch` is memory that the caller keeps for the next call.
[[nodiscard]] size_t ReadBySectors(const SectorReader& read, uint64_t offset,
                                   std::span<std::byte> buffer, std::vector<std::byte>& scratch);

}  // namespace quilmark
