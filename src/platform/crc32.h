// The checksum of ZIP archives: CRC-32 of the polynomial 0x04C11DB7, reflected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quilmark {

// Of `bytes` behind those whose checksum is `before`; 0 for none.
uint32_t Crc32(std::span<const std::byte> bytes, uint32_t before = 0);

}  // namespace quilmark
