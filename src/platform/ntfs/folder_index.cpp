#include "platform/ntfs/folder_index.h"

#include <algorithm>

#include "platform/bytes.h"
#include "platform/text.h"

namespace quilmark {

namespace {

constexpr std::u16string_view kIndexName = u"$I30";
// Chosen: $Extend, which is searched, has a handful of files, and a damaged size must not cost minutes.
constexpr uint64_t kMostIndexBytes = 16 << 20;
constexpr uint32_t kIndexMagic = 0x5844'4E49;  // "INDX"

// Byte offsets of the index header: in the value of $INDEX_ROOT, and in an INDX block.
constexpr size_t kHeaderInRoot = 16, kHeaderInBlock = 24;
constexpr size_t kFirstEntry = 0, kUsedBytes = 4, kLeastHeader = 16;

// In an entry.
constexpr size_t kEntryLength = 8, kKeyLength = 10, kEntryFlags = 12, kKey = 16;
constexpr uint16_t kFlagLast = 2;

bool IsName(std::span<const std::byte> key, std::u16string_view wanted) {
  const auto value = ParseFileName(key);
  if (!value) return false;
  std::u16string name;
  LoadUnits(value->name, name);
  return EqualNoCase(name, wanted);
}

// Walks the entries behind the index header at `header`.
std::optional<FileReference> FindEntry(std::span<const std::byte> bytes, size_t header,
                                       std::u16string_view name) {
  if (!Fits(bytes.size(), header, kLeastHeader)) return std::nullopt;
  const auto index = bytes.subspan(header);
  const auto entries = index.first(std::min<size_t>(index.size(), LoadLe<uint32_t>(index, kUsedBytes)));
  size_t offset = LoadLe<uint32_t>(index, kFirstEntry);
  while (Fits(entries.size(), offset, kKey)) {
    const auto entry = entries.subspan(offset);
    const size_t length = LoadLe<uint16_t>(entry, kEntryLength);
    const size_t keyLength = LoadLe<uint16_t>(entry, kKeyLength);
    const auto flags = LoadLe<uint16_t>(entry, kEntryFlags);
    if ((flags & kFlagLast) != 0 || length < kKey || length > entry.size()) return std::nullopt;
    if (!Fits(length, kKey, keyLength)) return std::nullopt;
    if (IsName(entry.subspan(kKey, keyLength), name)) return FileReference(LoadLe<uint64_t>(entry, 0));
    offset += length;
  }
  return std::nullopt;
}

std::optional<FileReference> FindInBlocks(MftReader& reader, const NtfsStream& blocks,
                                          std::u16string_view name) {
  std::vector<std::byte> block(reader.geometry.indexBytes);
  const uint64_t end = std::min(blocks.size, kMostIndexBytes);
  for (uint64_t offset = 0; offset + block.size() <= end; offset += block.size()) {
    if (reader.IsCancelled()) return std::nullopt;
    if (ReadStream(*reader.source, blocks, StreamOffset(offset), block) != block.size())
      return std::nullopt;
    if (LoadLe<uint32_t>(block, 0) != kIndexMagic || !ApplyFixups(block)) continue;
    if (const auto found = FindEntry(block, kHeaderInBlock, name)) return found;
  }
  return std::nullopt;
}

}  // namespace

std::optional<FileReference> FindInFolder(MftReader& reader, RecordNumber folder,
                                          std::u16string_view name) {
  const auto root = FindStream(reader, folder, kIndexRoot, kIndexName);
  if (!root) return std::nullopt;
  if (const auto found = FindEntry(root->resident, kHeaderInRoot, name)) return found;
  const auto blocks = FindStream(reader, folder, kIndexAllocation, kIndexName);
  return blocks ? FindInBlocks(reader, *blocks, name) : std::nullopt;
}

}  // namespace quilmark
