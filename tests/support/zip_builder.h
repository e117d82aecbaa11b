// Archives of tests, byte by byte: those that programs write, and those that none would.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quilmark {

inline constexpr uint16_t kStored = 0, kDeflated = 8;

// One entry. What is not given is what a program would write.
struct ZipEntry {
  std::string name;
  std::string data = {};
  uint16_t method = kDeflated;
  uint16_t flags = 0;
  uint32_t externalAttributes = 0;
  std::string extra = {};                  // of the directory's record
  std::optional<std::string> packed = {};  // what stands for `data` in the archive
  std::optional<uint32_t> crc = {};
  std::optional<uint32_t> packedSize = {}, size = {};  // as the directory tells them
  std::optional<uint32_t> localOffset = {};            // of another entry's bytes
  bool hasLocal = true;                                // false: it has no bytes of its own
};

// What stands around the entries.
struct ZipFrame {
  std::string before = {};  // in front of the archive
  std::string comment = {};
  bool isZip64 = false;
  std::optional<uint64_t> directoryOffset = {}, directorySize = {}, entryCount = {};
};

// The archive's bytes.
std::string MakeZip(const std::vector<ZipEntry>& entries, const ZipFrame& frame = {});

// Raw deflate of the text.
std::string Deflate(std::string_view text);

// Little-endian bytes of a number, the lowest `count` of them.
std::string LeBytes(uint64_t number, size_t count);

}  // namespace quilmark
