// Calls that read much end soon after a cancellation, and leave the device as good as before.
#include <gtest/gtest.h>

#include <functional>

#include "platform/bytes.h"
#include "platform/ntfs/mft_reader.h"
#include "platform/ntfs/raw_ntfs_device.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(kRootRecord.value, 1),
                   kExtend = MakeReference(kExtendRecord.value, 1);
constexpr uint64_t kJournalRecord = 24, kJournalId = 0x77;

// What the reads of a source are counted in, and what one of them sets off.
struct Watch {
  size_t reads = 0;
  size_t actAt = SIZE_MAX;
  std::function<void()> act;
};

class WatchedSource : public ByteSource {
 public:
  WatchedSource(const MemoryVolume& volume, Watch& watch) : source_(volume.Open()), watch_(watch) {}
  uint64_t Size() const override { return source_->Size(); }
  size_t ReadAt(ByteOffset offset, std::span<std::byte> buffer) override {
    if (watch_.reads++ == watch_.actAt) watch_.act();
    return source_->ReadAt(offset, buffer);
  }

 private:
  std::unique_ptr<ByteSource> source_;
  Watch& watch_;
};

struct Answer {
  uint32_t error = 0;
  Bytes output;
  bool operator==(const Answer&) const = default;
};

struct CancelledCall : testing::Test {
  // Between a cancellation and the next look at it: the straight way through a few records.
  static constexpr size_t kMostReadsAfter = 6;
  MemoryVolume volume;
  Watch watch;
  std::unique_ptr<VolumeDevice> device;

  void Open() {
    device = OpenRawNtfs(std::make_unique<WatchedSource>(volume, watch));
    ASSERT_NE(device, nullptr);
  }
  Answer Ask(uint32_t code, const std::vector<uint64_t>& input) {
    Bytes block(65'536);
    watch.reads = 0;
    const auto reply = device->Control(code, std::as_bytes(std::span(input)), block);
    block.resize(reply.bytes);
    return {reply.error, block};
  }
  // Cancels at the first read of the call, at the second, and so on.
  void CancelAtEveryRead(uint32_t code, const std::vector<uint64_t>& input) {
    Open();
    Ask(kFsctlCreateUsnJournal, {0, 0});
    const Answer whole = Ask(code, input);
    const size_t reads = watch.reads;
    ASSERT_GE(reads, 20u) << "nothing to cancel";
    for (size_t at = 0; at < reads; ++at) {
      SCOPED_TRACE(at);
      Open();
      Ask(kFsctlCreateUsnJournal, {0, 0});
      watch.act = [this] { device->Cancel(); };
      watch.actAt = at;
      EXPECT_EQ(Ask(code, input).error, kErrorOperationAborted);
      EXPECT_LE(watch.reads, at + 1 + kMostReadsAfter);
      watch.actAt = SIZE_MAX;
      EXPECT_EQ(Ask(code, input), whole);
    }
  }
};

TEST_F(CancelledCall, AnEnumerationOfATableThatCannotBeRead) {
  NtfsVolumeBuilder builder;
  for (uint64_t number = 20; number < 60; ++number) builder.File(number, kRoot, u"file");
  volume = builder.Build();
  constexpr uint64_t kBad = kBuiltMftCluster * kBuiltClusterBytes + 21 * kBuiltRecordBytes;
  volume.badPlaces = {{kBad, kBad + 1}};
  CancelAtEveryRead(kFsctlEnumUsnData, {16, 0, INT64_MAX});
}

TEST_F(CancelledCall, AnEnumerationThatLooksForANameInManyRecords) {
  const uint64_t base = MakeReference(20, 1);
  std::vector<RecordBuilder::Listed> list;
  NtfsVolumeBuilder builder;
  for (uint64_t holder = 30; holder < 55; ++holder) {
    list.push_back({kFileName, 0, MakeReference(holder, 1), u""});
    builder.Record(holder, RecordBuilder().Finish({.baseReference = base}));
  }
  builder.Record(54, RecordBuilder().FileName(kRoot, u"last").Finish({.baseReference = base}))
      .Record(20,
              RecordBuilder().Resident(kAttributeList, {}, RecordBuilder::ListValue(list)).Finish({}));
  volume = builder.Build();
  CancelAtEveryRead(kFsctlEnumUsnData, {16, 0, INT64_MAX});
}

// $Max and the journal's name; $J is for the caller to add.
RecordBuilder JournalRecord() {
  Bytes max(32);
  StoreLe(std::span(max), 16, kJournalId);
  return RecordBuilder().FileName(kExtend, u"$UsnJrnl").Resident(kData, u"$Max", max);
}

TEST_F(CancelledCall, AQueryThatLooksForTheJournalInALongFolder) {
  constexpr uint64_t kBlocks = 40, kPlace = 2'000;
  volume =
      NtfsVolumeBuilder()
          .Record(kExtendRecord.value,
                  RecordBuilder()
                      .FileName(kRoot, u"$Extend")
                      .Resident(kIndexRoot, u"$I30", IndexRootValue({}))
                      .NonResident(kIndexAllocation, u"$I30", MappingPairs({{kPlace, kBlocks}}),
                                   kBlocks * kBuiltClusterBytes)
                      .Finish({.isDirectory = true}))
          .Cluster(kPlace + kBlocks - 1, IndexBlock({{MakeReference(kJournalRecord, 1), u"$UsnJrnl"}}))
          .Record(
              kJournalRecord,
              JournalRecord().NonResident(kData, u"$J", MappingPairs({{1'000, 1}}), 4'096).Finish({}))
          .Build();
  CancelAtEveryRead(kFsctlQueryUsnJournal, {});
  EXPECT_EQ(LoadLe<uint64_t>(Ask(kFsctlQueryUsnJournal, {}).output, 0), kJournalId);
}

TEST_F(CancelledCall, AQueryOfAJournalWhosePartsLieInManyRecords) {
  constexpr uint64_t kParts = 20;
  const uint64_t base = MakeReference(kJournalRecord, 1);
  std::vector<RecordBuilder::Listed> list = {{kData, 0, base, u"$Max"}};
  NtfsVolumeBuilder builder;
  builder.Journal(kJournalId, 0, {});
  for (uint64_t part = 0; part < kParts; ++part) {
    const uint64_t holder = 30 + part;
    list.push_back({kData, part, MakeReference(holder, 1), u"$J"});
    builder.Record(holder, RecordBuilder()
                               .NonResident(kData, u"$J", MappingPairs({{1'000 + 2 * int64_t(part), 1}}),
                                            kParts * kBuiltClusterBytes, part)
                               .Finish({.baseReference = base}));
  }
  // The list has to lie outside its record.
  const Bytes listed = RecordBuilder::ListValue(list);
  builder.Cluster(3'000, listed)
      .Record(kJournalRecord,
              JournalRecord()
                  .NonResident(kAttributeList, {}, MappingPairs({{3'000, 1}}), listed.size())
                  .Finish({}));
  volume = builder.Build();
  CancelAtEveryRead(kFsctlQueryUsnJournal, {});
  const Answer answer = Ask(kFsctlQueryUsnJournal, {});
  EXPECT_EQ(LoadLe<int64_t>(answer.output, 16), int64_t{kParts * kBuiltClusterBytes});
}

TEST_F(CancelledCall, ASearchForTheNearestRecordInUse) {
  NtfsVolumeBuilder builder;
  for (uint64_t number = 20; number < 60; ++number) {
    builder.Record(number, RecordBuilder().FileName(kRoot, u"gone").Finish({.inUse = false}));
  }
  volume = builder.Build();
  CancelAtEveryRead(kFsctlGetNtfsFileRecord, {59});
}

TEST_F(CancelledCall, AReadOfALongJournal) {
  // Pages without a record that is wanted.
  volume = NtfsVolumeBuilder().Journal(kJournalId, 0, Bytes(2 << 20)).Build();
  CancelAtEveryRead(kFsctlReadUsnJournal, {0, 0x100, 0, 0, kJournalId});
}

// A table in 25 parts, each told by a record of the part before.
MemoryVolume TableInParts() {
  constexpr uint64_t kParts = 25;
  const uint64_t self = MakeReference(kMftRecord.value, 1);
  std::vector<RecordBuilder::Listed> list = {{kData, 0, self, u""}};
  NtfsVolumeBuilder builder;
  for (uint64_t part = 0; part < kParts; ++part) {
    list.push_back({kData, 10 + part, MakeReference(13 + part, 1), u""});
    const auto runs = MappingPairs({{100 + 2 * int64_t(part), 1}});
    builder.Record(
        13 + part,
        RecordBuilder().NonResident(kData, {}, runs, 0, 10 + part).Finish({.baseReference = self}));
  }
  const Bytes listed = RecordBuilder::ListValue(list);
  return builder.Cluster(3'000, listed)
      .Record(kMftRecord.value,
              RecordBuilder()
                  .NonResident(kAttributeList, {}, MappingPairs({{3'000, 1}}), listed.size())
                  .NonResident(kData, {}, MappingPairs({{kBuiltMftCluster, 10}}),
                               (10 + kParts) * kBuiltClusterBytes)
                  .Finish({}))
      .Build();
}

TEST(CancelledOpen, EndsTheSearchForThePartsOfTheTable) {
  const MemoryVolume volume = TableInParts();
  Watch whole;
  ASSERT_NE(OpenRawNtfs(std::make_unique<WatchedSource>(volume, whole)), nullptr);
  ASSERT_GE(whole.reads, 25u);
  for (size_t at = 0; at < whole.reads; ++at) {
    SCOPED_TRACE(at);
    std::atomic<bool> cancelled = false;
    Watch watch{.actAt = at, .act = [&] { cancelled = true; }};
    EXPECT_EQ(OpenRawNtfs(std::make_unique<WatchedSource>(volume, watch), &cancelled), nullptr);
    EXPECT_LE(watch.reads, at + 1 + CancelledCall::kMostReadsAfter);
  }
}

TEST(CancelledOpen, IsNotLookedAtAfterTheCall) {
  const MemoryVolume volume = TableInParts();
  std::atomic<bool> cancelled = false;
  const auto device = OpenRawNtfs(volume.Open(), &cancelled);
  cancelled = true;
  Bytes data(96);
  EXPECT_EQ(device->Control(kFsctlGetNtfsVolumeData, {}, data).error, 0u);
}

}  // namespace
}  // namespace quilmark
