#include "platform/ntfs/ntfs_stream.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/bytes.h"
#include "platform/ntfs/change_journal.h"
#include "platform/ntfs/mft_enumeration.h"
#include "platform/usn_record.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

constexpr uint64_t kRoot = MakeReference(kRootRecord.value, 1);

// Two extents with a hole between them on a volume full of 0xAA; bytes from 150 on were never written.
struct PartlyWritten : testing::Test {
  MemoryVolume volume{.size = 1'000};
  NtfsStream stream{.size = 200,
                    .initialized = 150,
                    .extents = {{.start = StreamOffset(0), .length = 64, .place = ByteOffset(400)},
                                {.start = StreamOffset(100), .length = 156, .place = ByteOffset(600)}}};
  PartlyWritten() { volume.stretches[0] = Bytes(1'000, std::byte{0xAA}); }

  Bytes Expected(uint64_t offset, size_t length) const {
    Bytes bytes;
    for (uint64_t at = offset; at < std::min<uint64_t>(offset + length, stream.size); ++at) {
      const bool isStored = (at < 64 || at >= 100) && at < 150;
      bytes.push_back(isStored ? std::byte{0xAA} : std::byte{0});
    }
    return bytes;
  }
};

TEST_F(PartlyWritten, WhatWasNeverWrittenReadsAsZerosWhereverAReadBegins) {
  const auto source = volume.Open();
  for (uint64_t offset = 0; offset <= 201; ++offset) {
    for (size_t length = 0; length <= 210; length += 7) {
      Bytes bytes(length, std::byte{0x55});
      bytes.resize(ReadStream(*source, stream, StreamOffset(offset), bytes));
      ASSERT_EQ(bytes, Expected(offset, length)) << offset << " " << length;
    }
  }
}

TEST_F(PartlyWritten, NothingIsStoredBehindWhatWasWritten) {
  EXPECT_EQ(NextStored(stream, StreamOffset(10)), StreamOffset(10));
  EXPECT_EQ(NextStored(stream, StreamOffset(70)), StreamOffset(100));
  EXPECT_EQ(NextStored(stream, StreamOffset(149)), StreamOffset(149));
  EXPECT_EQ(NextStored(stream, StreamOffset(150)), StreamOffset(200));
  stream.initialized = 80;  // ends in the hole
  EXPECT_EQ(NextStored(stream, StreamOffset(70)), StreamOffset(200));
}

TEST_F(PartlyWritten, ABadPlaceBehindWhatWasWrittenIsNotRead) {
  volume.badPlaces = {{650, 1'000}};  // byte 150 and on
  const auto source = volume.Open();
  Bytes bytes(200);
  EXPECT_EQ(ReadStream(*source, stream, StreamOffset(0), bytes), 200u);
}

TEST(NtfsTable, RecordsBehindWhatWasWrittenAreNoFiles) {
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

// $J of one cluster, of which `written` bytes hold records.
NtfsVolumeBuilder VolumeWithJournal(const Bytes& records, uint64_t written) {
  return NtfsVolumeBuilder()
      .Journal(7, 0, records)
      .Record(24, RecordBuilder()
                      .FileName(MakeReference(kExtendRecord.value, 1), u"$UsnJrnl")
                      .NonResident(kData, u"$J", MappingPairs({{1'000, 1}}), 4'096)
                      .Initialized(written)
                      .Resident(kData, u"$Max", Bytes(32))
                      .Finish({}));
}

TEST(ChangeJournal, EndsWhereItIsWrittenAndGoesOnFromThere) {
  const std::u16string_view name = u"f";
  const size_t length = UsnRecordLength(name.size());
  Bytes records(2 * length);
  for (const uint64_t number : {0u, 1u}) {
    PutUsnRecord(
        std::span(records).subspan(number * length),
        {.frn = FileReference(40 + number), .reason = 0x100, .name = std::as_bytes(std::span(name))}, 0);
  }
  for (const uint64_t recordsWritten : {1u, 2u}) {
    const auto volume = VolumeWithJournal(records, recordsWritten * length).Build();
    auto reader = OpenMft(volume.Open());
    const auto journal = OpenChangeJournal(*reader);
    ASSERT_TRUE(journal.has_value());
    EXPECT_EQ(journal->nextUsn, static_cast<int64_t>(recordsWritten * length));
    Bytes block(4'096);
    const auto reply = ReadChangeJournal(*reader->source, *journal, {}, block, false);
    EXPECT_EQ(reply.bytes, 8 + recordsWritten * length);
    EXPECT_EQ(LoadLe<uint64_t>(block, 0), recordsWritten * length);
  }
}

}  // namespace
}  // namespace quilmark
