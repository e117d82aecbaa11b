#include "platform/ntfs/mft_enumeration.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(kRootRecord.value, 1), kFile = MakeReference(20, 1),
                   kHolder = MakeReference(21, 1);

std::optional<MftFile> FileOf(const NtfsVolumeBuilder& builder, MftEnumeration& enumeration) {
  const MemoryVolume volume = builder.Build();
  auto reader = OpenMft(volume.Open());
  return reader ? FileAt(*reader, enumeration, RecordNumber(20)) : std::nullopt;
}

TEST(MftEnumeration, AStandardInformationThatIsTooShortTellsNothing) {
  MftEnumeration enumeration;
  const auto file = FileOf(
      NtfsVolumeBuilder().Record(
          20,
          RecordBuilder().Resident(kStandardInformation, {}, Bytes(8)).FileName(kRoot, u"a").Finish({})),
      enumeration);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->record.attributes, 0u);
  EXPECT_EQ(file->changed, 0u);
}

TEST(MftEnumeration, AShortNameIsKeptWhereTheListLeadsToNone) {
  MftEnumeration enumeration;
  const auto file =
      FileOf(NtfsVolumeBuilder()
                 .Record(20, RecordBuilder()
                                 .Resident(kAttributeList, {},
                                           RecordBuilder::ListValue({{kFileName, 0, kHolder, u""}}))
                                 .FileName(kRoot, u"SHORT", NameSpace::kDos)
                                 .Finish({}))
                 .Record(21, RecordBuilder().Finish({.baseReference = kFile})),
             enumeration);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->record.name.size(), 10u);
}

TEST(MftEnumeration, ABlockWithoutRoomForItsPositionIsToldSo) {
  const MemoryVolume volume = NtfsVolumeBuilder().File(20, kRoot, u"a").Build();
  auto reader = OpenMft(volume.Open());
  ASSERT_TRUE(reader);
  MftEnumeration enumeration;
  for (const size_t size : {0u, 7u}) {
    Bytes output(size);
    EXPECT_EQ(EnumerateMft(*reader, enumeration, {.highUsn = INT64_MAX}, output).error, kErrorMoreData);
  }
}

TEST(MftEnumeration, RecordsBehindWhatWasWrittenAreNoFiles) {
  constexpr uint64_t kRecords = 24;
  const auto volume =
      NtfsVolumeBuilder()
          .Record(0, RecordBuilder()
                         .FileName(kRoot, u"$MFT")
                         .NonResident(kData, {}, MappingPairs({{kBuiltMftCluster, kRecords / 4}}),
                                      kRecords * kBuiltRecordBytes)
                         .Initialized(21 * kBuiltRecordBytes)
                         .Finish({}))
          .File(20, kRoot, u"written")
          .File(21, kRoot, u"left over on the disk")
          .Build();
  auto reader = OpenMft(volume.Open());
  ASSERT_TRUE(reader.has_value());
  MftEnumeration enumeration;
  EXPECT_TRUE(FileAt(*reader, enumeration, RecordNumber(20)).has_value());
  EXPECT_FALSE(FileAt(*reader, enumeration, RecordNumber(21)).has_value());
}

// References of the files that one block holds.
std::vector<uint64_t> FilesIn(std::span<const std::byte> block) {
  std::vector<uint64_t> files;
  UsnCursor cursor{.block = block};
  while (const auto record = NextUsnRecord(cursor)) files.push_back(record->frn.value);
  return files;
}

TEST(MftEnumeration, ABlockEndsWhereTheNextRecordHasNoRoomAndGoesOnFromThere) {
  const auto volume = NtfsVolumeBuilder().File(20, kRoot, u"a").File(21, kRoot, u"b").Build();
  auto reader = OpenMft(volume.Open());
  ASSERT_TRUE(reader);
  MftEnumeration enumeration;
  MftRange range{.number = RecordNumber(16), .highUsn = INT64_MAX};
  Bytes block(kUsnPositionBytes + UsnRecordLength(1));
  EXPECT_EQ(EnumerateMft(*reader, enumeration, range, block).bytes, block.size());
  EXPECT_EQ(FilesIn(block), std::vector<uint64_t>{kFile});
  range.number = RecordNumber(LoadLe<uint64_t>(block, 0));
  EXPECT_EQ(range.number, RecordNumber(21));
  EXPECT_EQ(EnumerateMft(*reader, enumeration, range, block).error, 0u);
  EXPECT_EQ(FilesIn(block), std::vector<uint64_t>{kHolder});
  range.number = RecordNumber(LoadLe<uint64_t>(block, 0));
  EXPECT_EQ(EnumerateMft(*reader, enumeration, range, block).error, kErrorHandleEof);
}

TEST(MftEnumeration, AnOutputOfAnySizeIsTakenAndNoneTooSmallIsFilled) {
  const auto volume = NtfsVolumeBuilder().File(20, kRoot, u"a").Build();
  auto reader = OpenMft(volume.Open());
  ASSERT_TRUE(reader);
  MftEnumeration enumeration;
  const MftRange range{.number = RecordNumber(20), .highUsn = INT64_MAX};
  for (size_t size = 0; size < kUsnPositionBytes + UsnRecordLength(1); ++size) {
    Bytes block(size);
    EXPECT_EQ(EnumerateMft(*reader, enumeration, range, block).error, kErrorMoreData) << size;
  }
}

TEST(MftEnumeration, ARecordBehindTheTableIsNoFile) {
  const auto volume = NtfsVolumeBuilder().File(20, kRoot, u"a").Build();
  auto reader = OpenMft(volume.Open());
  ASSERT_TRUE(reader);
  MftEnumeration enumeration;
  for (const uint64_t number : {reader->recordCount, kRecordNumberMask, UINT64_MAX}) {
    EXPECT_FALSE(FileAt(*reader, enumeration, RecordNumber(number))) << number;
  }
}

}  // namespace
}  // namespace quilmark
