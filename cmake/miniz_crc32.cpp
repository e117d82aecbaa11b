// The checksum as miniz asks for it.
#include <miniz.h>

#include "platform/crc32.h"

extern "C" mz_ulong mz_crc32(mz_ulong crc, const mz_uint8* bytes, size_t size) {
  if (bytes == nullptr) return MZ_CRC32_INIT;
  return quilmark::Crc32(std::as_bytes(std::span(bytes, size)), static_cast<uint32_t>(crc));
}
