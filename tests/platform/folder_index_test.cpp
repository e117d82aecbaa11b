#include "platform/ntfs/folder_index.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(kRootRecord.value, 1), kFolder = 20, kBlocks = 300;
constexpr uint64_t kAlpha = MakeReference(30, 1), kBeta = MakeReference(31, 1);

using Entries = std::vector<std::pair<uint64_t, std::u16string_view>>;

std::optional<FileReference> Find(const RecordBuilder& folder, const std::vector<Bytes>& blocks,
                                  std::u16string_view name) {
  NtfsVolumeBuilder builder;
  builder.Record(kFolder, folder.Finish({.isDirectory = true}));
  for (size_t i = 0; i < blocks.size(); ++i) builder.Cluster(kBlocks + i, blocks[i]);
  const MemoryVolume volume = builder.Build();
  auto reader = OpenMft(volume.Open());
  return reader ? FindInFolder(*reader, RecordNumber(kFolder), name) : std::nullopt;
}

RecordBuilder Folder(const Bytes& root) {
  return RecordBuilder().FileName(kRoot, u"folder").Resident(kIndexRoot, u"$I30", root);
}

RecordBuilder FolderWithBlocks(uint64_t count) {
  return Folder(IndexRootValue({}))
      .NonResident(kIndexAllocation, u"$I30", MappingPairs({{kBlocks, count}}),
                   count * kBuiltClusterBytes);
}

TEST(FolderIndex, FindsANameInTheRootOfTheTree) {
  const auto folder = Folder(IndexRootValue({{kAlpha, u"alpha"}, {kBeta, u"beta"}}));
  EXPECT_EQ(Find(folder, {}, u"beta"), FileReference(kBeta));
  EXPECT_EQ(Find(folder, {}, u"BETA"), FileReference(kBeta));
  EXPECT_EQ(Find(folder, {}, u"gamma"), std::nullopt);
}

TEST(FolderIndex, FindsANameInTheBlocks) {
  const auto folder = FolderWithBlocks(2);
  const std::vector<Bytes> blocks = {IndexBlock({{kAlpha, u"alpha"}}), IndexBlock({{kBeta, u"beta"}})};
  EXPECT_EQ(Find(folder, blocks, u"alpha"), FileReference(kAlpha));
  EXPECT_EQ(Find(folder, blocks, u"beta"), FileReference(kBeta));
  EXPECT_EQ(Find(folder, blocks, u"gamma"), std::nullopt);
}

TEST(FolderIndex, PassesOverABlockThatIsNoneOrIsDamaged) {
  Bytes foreign = IndexBlock({{kBeta, u"beta"}}), torn = foreign;
  foreign[0] = std::byte{'X'};
  torn[kBuiltClusterBytes - 1] ^= std::byte{1};
  for (const Bytes& bad : {foreign, torn}) {
    const std::vector<Bytes> blocks = {bad, IndexBlock({{kAlpha, u"alpha"}})};
    EXPECT_EQ(Find(FolderWithBlocks(2), blocks, u"alpha"), FileReference(kAlpha));
    EXPECT_EQ(Find(FolderWithBlocks(2), blocks, u"beta"), std::nullopt);
  }
}

TEST(FolderIndex, EndsAtABlockThatCannotBeRead) {
  NtfsVolumeBuilder builder;
  builder.Record(kFolder, FolderWithBlocks(2).Finish({.isDirectory = true}))
      .Cluster(kBlocks, IndexBlock({{kBeta, u"beta"}}))
      .Cluster(kBlocks + 1, IndexBlock({{kAlpha, u"alpha"}}));
  MemoryVolume volume = builder.Build();
  volume.badPlaces = {{kBlocks * kBuiltClusterBytes, kBlocks * kBuiltClusterBytes + 512}};
  auto reader = OpenMft(volume.Open());
  ASSERT_TRUE(reader);
  EXPECT_EQ(FindInFolder(*reader, RecordNumber(kFolder), u"alpha"), std::nullopt);
}

// An entry of the root, by where its fields stand.
constexpr size_t kFirstEntry = 32, kEntryLength = 8, kKeyLength = 10, kFlags = 12, kNameUnits = 16 + 64;

TEST(FolderIndex, AnEntryThatDoesNotFitEndsTheWalk) {
  struct Damage {
    const char* what;
    size_t offset;  // in the first entry
    uint16_t value;
  };
  for (const auto& [what, offset, value] : {Damage{"no length", kEntryLength, 0},
                                            {"shorter than its head", kEntryLength, 8},
                                            {"longer than the index", kEntryLength, 0xFFF8},
                                            {"a key longer than the entry", kKeyLength, 0xFFF0},
                                            {"the last one", kFlags, 2}}) {
    Bytes root = IndexRootValue({{kAlpha, u"alpha"}, {kBeta, u"beta"}});
    StoreLe(std::span(root), kFirstEntry + offset, value);
    EXPECT_EQ(Find(Folder(root), {}, u"alpha"), std::nullopt) << what;
    EXPECT_EQ(Find(Folder(root), {}, u"beta"), std::nullopt) << what;
  }
}

TEST(FolderIndex, AKeyThatIsNoNameIsPassedOver) {
  Bytes root = IndexRootValue({{kAlpha, u"alpha"}, {kBeta, u"beta"}});
  StoreLe(std::span(root), kFirstEntry + kNameUnits, uint8_t{200});
  EXPECT_EQ(Find(Folder(root), {}, u"alpha"), std::nullopt);
  EXPECT_EQ(Find(Folder(root), {}, u"beta"), FileReference(kBeta));
}

TEST(FolderIndex, ARootWithoutRoomForItsHeaderHasNoEntry) {
  const Bytes root = IndexRootValue({{kAlpha, u"alpha"}});
  for (const size_t size : {0u, 8u, 16u, 24u, 31u}) {
    const Bytes shorter(root.begin(), root.begin() + static_cast<ptrdiff_t>(size));
    EXPECT_EQ(Find(Folder(shorter), {}, u"alpha"), std::nullopt) << size;
  }
}

}  // namespace
}  // namespace quilmark
