#include "support/zip_builder.h"

#include <miniz.h>

#include <cstdlib>

namespace quilmark {

namespace {

struct Sizes {
  uint32_t crc, packed, full;
};

// The part that a local header and a record of the directory have in common.
std::string CommonHeader(const ZipEntry& entry, const Sizes& sizes, size_t extraSize) {
  return LeBytes(20, 2) + LeBytes(entry.flags, 2) + LeBytes(entry.method, 2) + LeBytes(0, 4) +
         LeBytes(sizes.crc, 4) + LeBytes(sizes.packed, 4) + LeBytes(sizes.full, 4) +
         LeBytes(entry.name.size(), 2) + LeBytes(extraSize, 2);
}

std::string Zip64End(uint64_t at, uint64_t count, uint64_t size, uint64_t offset) {
  return "PK\x06\x06" + LeBytes(44, 8) + LeBytes(45, 2) + LeBytes(45, 2) + LeBytes(0, 8) +
         LeBytes(count, 8) + LeBytes(count, 8) + LeBytes(size, 8) + LeBytes(offset, 8) + "PK\x06\x07" +
         LeBytes(0, 4) + LeBytes(at, 8) + LeBytes(1, 4);
}

}  // namespace

std::string LeBytes(uint64_t number, size_t count) {
  std::string bytes;
  for (size_t i = 0; i < count; ++i) bytes.push_back(static_cast<char>(number >> (8 * i)));
  return bytes;
}

std::string Deflate(std::string_view text) {
  size_t size = 0;
  void* packed = tdefl_compress_mem_to_heap(text.data(), text.size(), &size, TDEFL_DEFAULT_MAX_PROBES);
  std::string bytes(static_cast<const char*>(packed), size);
  mz_free(packed);
  return bytes;
}

std::string MakeZip(const std::vector<ZipEntry>& entries, const ZipFrame& frame) {
  std::string bytes, directory, packed;
  Sizes sizes{};
  const ZipEntry* former = nullptr;
  for (const ZipEntry& entry : entries) {
    // Thousands of entries may have the same data.
    const bool isSame = former != nullptr && former->data == entry.data &&
                        former->method == entry.method && former->packed == entry.packed;
    if (!isSame) {
      packed = entry.packed.value_or(entry.method == kDeflated ? Deflate(entry.data) : entry.data);
      const auto* data = reinterpret_cast<const unsigned char*>(entry.data.data());
      sizes = {static_cast<uint32_t>(mz_crc32(MZ_CRC32_INIT, data, entry.data.size())),
               static_cast<uint32_t>(packed.size()), static_cast<uint32_t>(entry.data.size())};
    }
    former = &entry;
    const Sizes told{entry.crc.value_or(sizes.crc), entry.packedSize.value_or(sizes.packed),
                     entry.size.value_or(sizes.full)};
    const uint64_t offset = entry.localOffset.value_or(static_cast<uint32_t>(bytes.size()));
    if (entry.hasLocal) bytes += "PK\x03\x04" + CommonHeader(entry, told, 0) + entry.name + packed;
    directory += "PK\x01\x02" + LeBytes(20, 2) + CommonHeader(entry, told, entry.extra.size()) +
                 LeBytes(0, 6) + LeBytes(entry.externalAttributes, 4) + LeBytes(offset, 4) + entry.name +
                 entry.extra;
  }
  const uint64_t offset = frame.directoryOffset.value_or(bytes.size());
  const uint64_t size = frame.directorySize.value_or(directory.size());
  const uint64_t count = frame.entryCount.value_or(entries.size());
  bytes += directory;
  if (frame.isZip64) bytes += Zip64End(bytes.size(), count, size, offset);
  bytes += "PK\x05\x06" + LeBytes(0, 4) + LeBytes(count, 2) + LeBytes(count, 2) + LeBytes(size, 4) +
           LeBytes(offset, 4) + LeBytes(frame.comment.size(), 2) + frame.comment;
  return frame.before + bytes;
}

}  // namespace quilmark
