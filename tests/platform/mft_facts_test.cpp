#include "platform/ntfs/mft_facts.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(5, 1), kFile = MakeReference(30, 1);
constexpr FileTime kCreated = 132'000'000'000'000'000, kModified = 133'000'000'000'000'000;
constexpr uint64_t kListCluster = 200;
constexpr uint64_t kTooLarge = uint64_t{1} << 63;

// The beginning of a file's base record.
RecordBuilder File() {
  return RecordBuilder().StandardInformation(0x20).Dates(kCreated, kModified).FileName(kRoot, u"a");
}

// The same with an $ATTRIBUTE_LIST of these entries.
RecordBuilder ListedFile(const std::vector<RecordBuilder::Listed>& entries) {
  return RecordBuilder()
      .StandardInformation(0x20)
      .Dates(kCreated, kModified)
      .Resident(kAttributeList, {}, RecordBuilder::ListValue(entries))
      .FileName(kRoot, u"a");
}

Bytes Extension(RecordBuilder& record, uint64_t base = kFile) {
  return record.Finish({.baseReference = base});
}

constexpr RecordBuilder::Listed kDataIn31 = {kData, 0, MakeReference(31, 1), {}};

std::optional<FileFacts> FactsIn(const NtfsVolumeBuilder& builder, uint64_t reference = kFile) {
  const MemoryVolume volume = builder.Build();
  const auto device = OpenRawNtfs(volume.Open());
  return device != nullptr ? device->ReadFacts(FileReference(reference)) : std::nullopt;
}

std::optional<FileFacts> FactsOf(const RecordBuilder& record, const RecordBuilder::Header& header = {}) {
  return FactsIn(NtfsVolumeBuilder().Record(30, record.Finish(header)));
}

// -1: nothing is known.
int64_t SizeIn(const NtfsVolumeBuilder& volume) {
  const auto facts = FactsIn(volume);
  return facts ? static_cast<int64_t>(facts->size) : -1;
}

TEST(MftFacts, TakesTheSizeOfDataInTheRecordAndBothDates) {
  const auto facts = FactsOf(File().Resident(kData, {}, Bytes(123)));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->size, 123u);
  EXPECT_EQ(facts->created, kCreated);
  EXPECT_EQ(facts->modified, kModified);
  EXPECT_FALSE(facts->isDirectory);
}

TEST(MftFacts, TakesTheRealSizeAndNotWhatWasAllocatedOrWritten) {
  const auto facts =
      FactsOf(File().NonResident(kData, {}, MappingPairs({{300, 3}}), 10'000).Initialized(7));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->size, 10'000u);
}

TEST(MftFacts, NamedStreamsDoNotCount) {
  const auto facts = FactsOf(File().Resident(kData, u"other", Bytes(99)).Resident(kData, {}, Bytes(5)));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->size, 5u);
  const auto none = FactsOf(File().Resident(kData, u"other", Bytes(99)));
  ASSERT_TRUE(none);
  EXPECT_EQ(none->size, 0u);
}

TEST(MftFacts, AFolderHasDatesAndNoBytes) {
  const auto facts = FactsOf(File().Resident(kData, {}, Bytes(9)), {.isDirectory = true});
  ASSERT_TRUE(facts);
  EXPECT_TRUE(facts->isDirectory);
  EXPECT_EQ(facts->size, 0u);
  EXPECT_EQ(facts->modified, kModified);
}

TEST(MftFacts, TheShortFormOfTheDatesWillDo) {
  Bytes value(48);
  StoreLe(std::span(value), 0, kCreated);
  StoreLe(std::span(value), 8, kModified);
  const auto facts = FactsOf(RecordBuilder().Resident(kStandardInformation, {}, value));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->created, kCreated);
  EXPECT_EQ(facts->modified, kModified);
  value.resize(47);
  EXPECT_FALSE(FactsOf(RecordBuilder().Resident(kStandardInformation, {}, value)));
}

TEST(MftFacts, ADateBeyondEveryCalendarIsNone) {
  const auto facts = FactsOf(RecordBuilder().StandardInformation().Dates(kTooLarge, kTooLarge - 1));
  ASSERT_TRUE(facts);
  EXPECT_EQ(facts->created, 0u);
  EXPECT_EQ(facts->modified, kTooLarge - 1);
}

TEST(MftFacts, FollowsTheListToTheRecordThatHoldsTheData) {
  auto inRecord = RecordBuilder().Resident(kData, {}, Bytes(77));
  auto inClusters = RecordBuilder().NonResident(kData, {}, MappingPairs({{300, 3}}), 12'000);
  for (auto& [extension, size] :
       {std::pair(Extension(inRecord), 77), std::pair(Extension(inClusters), 12'000)}) {
    EXPECT_EQ(SizeIn(NtfsVolumeBuilder()
                         .Record(30, ListedFile({{kStandardInformation, 0, kFile, {}},
                                                 {kFileName, 0, kFile, {}},
                                                 {kData, 0, MakeReference(32, 1), u"named"},
                                                 kDataIn31,
                                                 {kData, 2, MakeReference(33, 1), {}}})
                                         .Finish({}))
                         .Record(31, extension)),
              size);
  }
}

TEST(MftFacts, FollowsAListThatLiesInClusters) {
  Bytes list = RecordBuilder::ListValue({{kStandardInformation, 0, kFile, {}}, kDataIn31});
  const uint64_t listBytes = list.size();
  auto extension = RecordBuilder().Resident(kData, {}, Bytes(77));
  const auto base = File().NonResident(kAttributeList, {}, MappingPairs({{kListCluster, 1}}), listBytes);
  NtfsVolumeBuilder volume;
  volume.Record(30, base.Finish({})).Record(31, Extension(extension)).Cluster(kListCluster, list);
  EXPECT_EQ(SizeIn(volume), 77);

  list.resize(32);  // the entry of the data is gone: whether there is data cannot be said
  volume.Cluster(kListCluster, list);
  EXPECT_EQ(SizeIn(volume), -1);
}

TEST(MftFacts, AFirstPartInTheBaseRecordNeedsNoList) {
  EXPECT_EQ(SizeIn(NtfsVolumeBuilder().Record(
                30, ListedFile({{kData, 0, kFile, {}}, {kData, 2, MakeReference(31, 1), {}}})
                        .NonResident(kData, {}, MappingPairs({{300, 2}}), 20'000)
                        .Finish({}))),
            20'000);
}

TEST(MftFacts, AListWithoutTheDataMeansThatThereIsNone) {
  EXPECT_EQ(
      SizeIn(NtfsVolumeBuilder().Record(30, ListedFile({{kStandardInformation, 0, kFile, {}},
                                                        {kData, 0, MakeReference(31, 1), u"named"}})
                                                .Finish({}))),
      0);
}

TEST(MftFacts, NothingIsKnownWhereTheHolderIsNotToBeBelieved) {
  const auto base = ListedFile({kDataIn31}).Finish({});
  auto data = RecordBuilder().Resident(kData, {}, Bytes(77));
  const auto sizeWith = [&](const Bytes& extension) {
    return SizeIn(NtfsVolumeBuilder().Record(30, base).Record(31, extension));
  };
  EXPECT_EQ(sizeWith(Extension(data)), 77);
  EXPECT_EQ(sizeWith(Extension(data, MakeReference(29, 1))), -1) << "of another file";
  EXPECT_EQ(sizeWith(data.Finish({.inUse = false, .baseReference = kFile})), -1);
  auto torn = Extension(data);
  torn[510] ^= std::byte{1};
  EXPECT_EQ(sizeWith(torn), -1);
  auto later = RecordBuilder().NonResident(kData, {}, MappingPairs({{300, 2}}), 0, 5);
  EXPECT_EQ(sizeWith(Extension(later)), -1) << "a later part has no size";
  EXPECT_EQ(SizeIn(NtfsVolumeBuilder().Record(30, base)), -1) << "behind the last record";
}

TEST(MftFacts, NothingIsKnownWithoutTheFirstPart) {
  EXPECT_EQ(SizeIn(NtfsVolumeBuilder().Record(
                30, File().NonResident(kData, {}, MappingPairs({{300, 2}}), 0, 5).Finish({}))),
            -1);
  EXPECT_EQ(SizeIn(NtfsVolumeBuilder().Record(
                30, ListedFile({{kData, 5, MakeReference(31, 1), {}}}).Finish({}))),
            -1);
}

TEST(MftFacts, NothingIsKnownBehindAnAttributeThatDoesNotFit) {
  const auto record = [](uint32_t length) {
    auto bytes = RecordBuilder()
                     .StandardInformation(0x20)
                     .Dates(kCreated, kModified)
                     .Resident(0x50, {}, Bytes(8))
                     .Resident(kData, {}, Bytes(77))
                     .Finish({});
    const size_t first = LoadLe<uint16_t>(bytes, 20);
    StoreLe(std::span(bytes), first + LoadLe<uint32_t>(bytes, first + 4) + 4, length);
    return NtfsVolumeBuilder().Record(30, bytes);
  };
  EXPECT_EQ(SizeIn(record(32)), 77);
  for (const uint32_t length : {0u, 8u, 2'000u, 0xFFFF'FFF8u}) EXPECT_EQ(SizeIn(record(length)), -1);
}

TEST(MftFacts, ANegativeSizeIsNone) {
  EXPECT_EQ(SizeIn(NtfsVolumeBuilder().Record(
                30, File().NonResident(kData, {}, MappingPairs({{300, 2}}), kTooLarge).Finish({}))),
            -1);
}

TEST(MftFacts, AReferenceNamesOneFileOnly) {
  NtfsVolumeBuilder volume;
  auto extension = RecordBuilder().StandardInformation().Resident(kData, {}, Bytes(7));
  volume.Record(30, File().Finish({.sequence = 4}))
      .Record(31, Extension(extension))
      .Record(32, File().Finish({.inUse = false}));
  EXPECT_TRUE(FactsIn(volume, MakeReference(30, 4)));
  EXPECT_FALSE(FactsIn(volume, MakeReference(30, 3)));
  EXPECT_FALSE(FactsIn(volume, MakeReference(31, 1)));
  EXPECT_FALSE(FactsIn(volume, MakeReference(32, 1)));
  EXPECT_FALSE(FactsIn(volume, MakeReference(33, 1)));
  EXPECT_FALSE(FactsIn(volume, MakeReference(kRecordNumberMask, 1)));
}

TEST(MftFacts, ADamagedRecordIsNotBelieved) {
  auto torn = File().Resident(kData, {}, Bytes(7)).Finish({});
  torn[1'022] ^= std::byte{1};
  EXPECT_FALSE(FactsIn(NtfsVolumeBuilder().Record(30, torn)));
  EXPECT_FALSE(FactsOf(RecordBuilder().FileName(kRoot, u"a").Resident(kData, {}, Bytes(7))))
      << "no dates";
}

TEST(MftFacts, AClosedDeviceKnowsNothing) {
  const auto volume = NtfsVolumeBuilder().Record(30, File().Finish({})).Build();
  const auto device = OpenRawNtfs(volume.Open());
  ASSERT_NE(device, nullptr);
  device->Cancel();  // of a former call: no effect on this one
  EXPECT_TRUE(device->ReadFacts(FileReference(kFile)));
  device->Close();
  EXPECT_FALSE(device->ReadFacts(FileReference(kFile)));
}

TEST(SizesInRecord, AreThoseOfTheUnnamedDataWithFixUpsAppliedOrNot) {
  Bytes record = File()
                     .Resident(kData, u"named", Bytes(5))
                     .NonResident(kData, {}, MappingPairs({{900, 2}}), 5'000)
                     .Finish({});
  for (int turn = 0; turn < 2; ++turn) {
    const auto sizes = SizesInRecord(record, FileReference(kFile));
    ASSERT_TRUE(sizes.has_value()) << turn;
    EXPECT_EQ(sizes->logical, 5'000u);
    EXPECT_GE(sizes->allocated, 5'000u);
    if (turn == 0) {
      ASSERT_TRUE(ApplyFixups(record));
    }
  }
}

TEST(SizesInRecord, OfDataInTheRecordAreBothItsLength) {
  const auto sizes =
      SizesInRecord(File().Resident(kData, {}, Bytes(123)).Finish({}), FileReference(kFile));
  ASSERT_TRUE(sizes.has_value());
  EXPECT_EQ(sizes->logical, 123u);
  EXPECT_EQ(sizes->allocated, 123u);
}

TEST(SizesInRecord, OfAFolderAndWithoutDataAreNone) {
  EXPECT_EQ(SizesInRecord(File().Finish({.isDirectory = true}), FileReference(kFile)).value().logical,
            0u);
  EXPECT_EQ(SizesInRecord(File().Finish({}), FileReference(kFile)).value().logical, 0u);
}

TEST(SizesInRecord, AreNotKnownOfAnotherFileOrWhereAnotherRecordHoldsThem) {
  const Bytes plain = File().Resident(kData, {}, Bytes(123)).Finish({});
  EXPECT_FALSE(SizesInRecord(plain, FileReference(MakeReference(30, 2))).has_value());
  EXPECT_FALSE(SizesInRecord(Bytes(1'024), FileReference(kFile)).has_value());
  EXPECT_FALSE(SizesInRecord({}, FileReference(kFile)).has_value());
  EXPECT_FALSE(SizesInRecord(File().Finish({.inUse = false}), FileReference(kFile)).has_value());
  EXPECT_FALSE(SizesInRecord(ListedFile({kDataIn31}).Finish({}), FileReference(kFile)).has_value());
  auto tooLarge = File();
  tooLarge.NonResident(kData, {}, MappingPairs({{900, 2}}), kTooLarge);
  EXPECT_FALSE(SizesInRecord(tooLarge.Finish({}), FileReference(kFile)).has_value());
}

}  // namespace
}  // namespace quilmark
