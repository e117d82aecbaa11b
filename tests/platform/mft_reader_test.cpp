#include "platform/ntfs/mft_reader.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(kRootRecord.value, 1), kFile = MakeReference(20, 1),
                   kHolder = MakeReference(21, 1), kOther = MakeReference(22, 1);

RecordBuilder Listed(const std::vector<RecordBuilder::Listed>& entries) {
  return RecordBuilder()
      .StandardInformation()
      .Resident(kAttributeList, {}, RecordBuilder::ListValue(entries))
      .FileName(kRoot, u"listed");
}

std::optional<NtfsStream> DataOf(const NtfsVolumeBuilder& builder) {
  const MemoryVolume volume = builder.Build();
  auto reader = OpenMft(volume.Open());
  return reader ? FindStream(*reader, RecordNumber(20), kData, u"wanted") : std::nullopt;
}

const std::vector<RecordBuilder::Listed> kEntries = {{kStandardInformation, 0, kFile, u""},
                                                     {kData, 0, kOther, u"other"},
                                                     {kData, 0, kHolder, u"wanted"},
                                                     {kData, 2, kOther, u"wanted"}};

Bytes FirstPart() {
  return RecordBuilder()
      .NonResident(kData, u"wanted", MappingPairs({{300, 2}}), 3 * kBuiltClusterBytes)
      .Finish({.baseReference = kFile});
}

RecordBuilder LaterPart() {
  return RecordBuilder().NonResident(kData, u"wanted", MappingPairs({{400, 1}}), 0, 2);
}

TEST(MftReader, JoinsThePartsThatAListNames) {
  const auto stream = DataOf(NtfsVolumeBuilder()
                                 .Record(20, Listed(kEntries).Finish({}))
                                 .Record(21, FirstPart())
                                 .Record(22, LaterPart().Finish({.baseReference = kFile})));
  ASSERT_TRUE(stream);
  EXPECT_EQ(stream->size, 3u * kBuiltClusterBytes);
  ASSERT_EQ(stream->extents.size(), 2u);
  EXPECT_EQ(stream->extents[1].place, ByteOffset(400 * kBuiltClusterBytes));
}

TEST(MftReader, AStreamOfWhichAPartIsMissingIsNone) {
  const RecordBuilder::Header bad[] = {{.inUse = false, .baseReference = kFile},
                                       {.baseReference = MakeReference(23, 1)},
                                       {.baseReference = 0}};
  for (const auto& header : bad) {
    EXPECT_FALSE(DataOf(NtfsVolumeBuilder()
                            .Record(20, Listed(kEntries).Finish({}))
                            .Record(21, FirstPart())
                            .Record(22, LaterPart().Finish(header))));
  }
  const auto without = [&](Bytes holder) {
    return DataOf(NtfsVolumeBuilder()
                      .Record(20, Listed(kEntries).Finish({}))
                      .Record(21, FirstPart())
                      .Record(22, std::move(holder)));
  };
  EXPECT_FALSE(without(RecordBuilder().Finish({.baseReference = kFile}))) << "no such attribute";
  EXPECT_FALSE(without(Bytes(kBuiltRecordBytes))) << "no record";
  EXPECT_FALSE(DataOf(NtfsVolumeBuilder().Record(
      20, Listed({{kData, 0, MakeReference(9'999, 1), u"wanted"}}).Finish({}))))
      << "a record behind the table";
  EXPECT_FALSE(DataOf(NtfsVolumeBuilder().Record(20, Listed({{kFileName, 0, kFile, u""}}).Finish({}))))
      << "not in the list";
}

TEST(MftReader, ARecordThatIsNotInUseHasNoStreams) {
  const auto record = RecordBuilder().Resident(kData, u"wanted", Bytes(8));
  EXPECT_TRUE(DataOf(NtfsVolumeBuilder().Record(20, record.Finish({}))));
  EXPECT_FALSE(DataOf(NtfsVolumeBuilder().Record(20, record.Finish({.inUse = false}))));
}

TEST(MftReader, WhatIsNoRecordHasNoList) {
  const MemoryVolume volume = NtfsVolumeBuilder().Build();
  auto reader = OpenMft(volume.Open());
  ASSERT_TRUE(reader);
  EXPECT_TRUE(ReadAttributeList(*reader, Bytes(kBuiltRecordBytes)).empty());
}

TEST(MftReader, AnEntryOfAListThatDoesNotFitEndsIt) {
  const Bytes good = RecordBuilder::ListValue({{kData, 0, kFile, u"name"}});
  for (const auto& [offset, value] : {std::pair<size_t, uint8_t>{4, 0},  // its length
                                      {4, 25},
                                      {4, 200},
                                      {6, 40},       // that of its name
                                      {7, 0xFF}}) {  // where that begins
    Bytes list(good.begin(), good.end());
    list[offset] = std::byte{value};
    AttributeListCursor cursor{.list = list};
    EXPECT_FALSE(NextListed(cursor)) << offset << " " << int{value};
  }
  for (size_t size = 0; size < good.size(); ++size) {
    const Bytes part(good.begin(), good.begin() + static_cast<ptrdiff_t>(size));
    AttributeListCursor cursor{.list = part};
    EXPECT_FALSE(NextListed(cursor)) << size;
  }
}

RecordBuilder MftAt(uint64_t cluster) {
  return RecordBuilder()
      .FileName(kRoot, u"$MFT")
      .NonResident(kData, {}, MappingPairs({{static_cast<int64_t>(cluster), 6}}),
                   24 * kBuiltRecordBytes);
}

TEST(MftReader, AFirstRecordOfTwoWritesGivesWayToItsCopy) {
  Bytes torn = MftAt(50).Finish({});
  torn[kBuiltRecordBytes - 1] ^= std::byte{1};
  auto volume = NtfsVolumeBuilder()
                    .Record(0, torn)
                    .File(20, kRoot, u"file")
                    .Cluster(2, MftAt(kBuiltMftCluster).Finish({}))
                    .Build();
  auto reader = OpenMft(volume.Open());
  ASSERT_TRUE(reader);
  EXPECT_EQ(reader->mft.extents[0].place, ByteOffset(kBuiltMftCluster * kBuiltClusterBytes));
  volume.badPlaces = {
      {kBuiltMftCluster * kBuiltClusterBytes, kBuiltMftCluster * kBuiltClusterBytes + 512}};
  EXPECT_TRUE(OpenMft(volume.Open())) << "nor need it be readable";
}

TEST(MftReader, ACopyThatNoOffsetReachesIsNotLookedFor) {
  Bytes torn = MftAt(50).Finish({});
  torn[kBuiltRecordBytes - 1] ^= std::byte{1};
  auto volume =
      NtfsVolumeBuilder().Record(0, torn).Cluster(2, MftAt(kBuiltMftCluster).Finish({})).Build();
  ASSERT_TRUE(OpenMft(volume.Open()));
  // In bytes this cluster wraps to the place of cluster 2.
  StoreLe(std::span(volume.stretches[0]), 56, uint64_t{1} << 52 | 2);
  EXPECT_FALSE(OpenMft(volume.Open()));
}

// A $MFT of six clusters whose second part, of one cluster at 400, is in record 21.
std::optional<MftReader> OpenWithPart(const RecordBuilder::Header& header) {
  static MemoryVolume volume;
  volume =
      NtfsVolumeBuilder()
          .Record(
              0,
              RecordBuilder()
                  .Resident(kAttributeList, {},
                            RecordBuilder::ListValue({{kData, 0, 0, u""}, {kData, 6, kHolder, u""}}))
                  .FileName(kRoot, u"$MFT")
                  .NonResident(kData, {}, MappingPairs({{kBuiltMftCluster, 6}}), 28 * kBuiltRecordBytes)
                  .Finish({}))
          .Record(21,
                  RecordBuilder().NonResident(kData, {}, MappingPairs({{400, 1}}), 0, 6).Finish(header))
          .Build();
  return OpenMft(volume.Open());
}

TEST(MftReader, FollowsTheTableToItsPartsAndToNoOthers) {
  const uint64_t mft = MakeReference(kMftRecord.value, 1);
  EXPECT_EQ(OpenWithPart({.baseReference = mft})->mft.extents.size(), 2u);
  EXPECT_EQ(OpenWithPart({.inUse = false, .baseReference = mft})->mft.extents.size(), 1u);
  EXPECT_EQ(OpenWithPart({.baseReference = kFile})->mft.extents.size(), 1u);
}

}  // namespace
}  // namespace quilmark
