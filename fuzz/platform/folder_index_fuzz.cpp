// Any bytes as the index of a folder, its root and its blocks: a name is found where a plain walk finds
// it first, whatever its case, and no other is found.
#include <optional>
#include <vector>

#include "platform/bytes.h"
#include "platform/ntfs/folder_index.h"
#include "platform/text.h"
#include "support/fuzz_input.h"
#include "support/ntfs_builder.h"

using namespace quilmark;

namespace {

constexpr uint64_t kFolder = 6, kBlocksCluster = 600;
constexpr size_t kMostRootBytes = 600, kMostBlocks = 4;

struct Entry {
  FileReference reference;
  std::u16string name;
};

// The entries behind the index header at `header`, up to the last or to one that does not fit.
void ListEntries(std::span<const std::byte> bytes, size_t header, std::vector<Entry>& entries) {
  if (!Fits(bytes.size(), header, 16)) return;
  const auto index = bytes.subspan(header);
  const size_t end = std::min<size_t>(index.size(), LoadLe<uint32_t>(index, 4));
  for (size_t at = LoadLe<uint32_t>(index, 0); Fits(end, at, 16);) {
    const size_t length = LoadLe<uint16_t>(index, at + 8), key = LoadLe<uint16_t>(index, at + 10);
    const bool isLast = (LoadLe<uint16_t>(index, at + 12) & 2) != 0;
    if (isLast || length < 16 + key || !Fits(end, at, length)) return;
    if (const auto value = ParseFileName(index.subspan(at + 16, key))) {
      entries.push_back({FileReference(LoadLe<uint64_t>(index, at)), UnitsOf(value->name)});
    }
    at += length;
  }
}

// The blocks are those of a builder's volume: clusters of 4,096 bytes, zeros behind the input.
void ListBlocks(const Bytes& blocks, std::vector<Entry>& entries) {
  for (size_t at = 0; at < blocks.size(); at += kBuiltClusterBytes) {
    Bytes block(blocks.begin() + static_cast<ptrdiff_t>(at),
                blocks.begin() +
                    static_cast<ptrdiff_t>(std::min<size_t>(at + kBuiltClusterBytes, blocks.size())));
    block.resize(kBuiltClusterBytes);
    if (std::memcmp(block.data(), "INDX", 4) != 0 || !ApplyFixups(block)) continue;
    ListEntries(block, 24, entries);
  }
}

MftReader OpenFolder(const MemoryVolume& volume) { return std::move(*OpenMft(volume.Open())); }

bool IsAscii(std::u16string_view text) {
  return std::all_of(text.begin(), text.end(), [](char16_t unit) { return unit < 0x80; });
}

std::optional<FileReference> FindPlainly(const std::vector<Entry>& entries, std::u16string_view name) {
  for (const Entry& entry : entries) {
    if (EqualNoCase(entry.name, name)) return entry.reference;
  }
  return std::nullopt;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  FuzzInput input = InputOf(data, size);
  const auto rootBytes = input.TakeBytes(std::min<size_t>(input.Take<uint16_t>(), kMostRootBytes));
  const auto blockBytes = input.TakeBytes(kMostBlocks * kBuiltClusterBytes);
  const Bytes root(rootBytes.begin(), rootBytes.end()), blocks(blockBytes.begin(), blockBytes.end());
  const uint64_t clusters = (blocks.size() + kBuiltClusterBytes - 1) / kBuiltClusterBytes;

  RecordBuilder folder;
  folder.StandardInformation()
      .FileName(kRootRecord.value, u"folder")
      .Resident(kIndexRoot, u"$I30", root);
  if (clusters != 0) {
    const Bytes runs = MappingPairs({{static_cast<int64_t>(kBlocksCluster), clusters}});
    folder.NonResident(kIndexAllocation, u"$I30", runs, clusters * kBuiltClusterBytes);
  }
  const MemoryVolume volume = NtfsVolumeBuilder()
                                  .Record(kFolder, folder.Finish({.isDirectory = true}))
                                  .Cluster(kBlocksCluster, blocks)
                                  .Build();
  MftReader reader = OpenFolder(volume);

  std::vector<Entry> entries;
  ListEntries(root, 16, entries);
  ListBlocks(blocks, entries);
  for (const Entry& entry : entries) {
    if (!IsAscii(entry.name)) continue;
    Require(FindInFolder(reader, RecordNumber(kFolder), entry.name) == FindPlainly(entries, entry.name));
  }
  Require(FindInFolder(reader, RecordNumber(kFolder), u"$UsnJrnl") == FindPlainly(entries, u"$usnjrnl"));
  return 0;
}
