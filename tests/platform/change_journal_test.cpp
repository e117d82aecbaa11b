#include "platform/ntfs/change_journal.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "platform/usn_record.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

constexpr uint64_t kJournalRecord = 24, kJournalId = 0x77, kFirstUsn = 16 * 4'096;

// A file that looks like the journal, in the record where the folder's entry leads.
Bytes JournalRecord(uint16_t sequence) {
  Bytes max(32);
  StoreLe(std::span(max), 16, kJournalId);
  return RecordBuilder()
      .FileName(MakeReference(kExtendRecord.value, 1), u"$UsnJrnl")
      .NonResident(kData, u"$J", MappingPairs({{1'000, 1}}), 4'096)
      .Resident(kData, u"$Max", max)
      .Finish({.sequence = sequence});
}

// The entry of the folder names record 24 with sequence number 1.
std::optional<ChangeJournal> JournalOf(const NtfsVolumeBuilder& builder) {
  const MemoryVolume volume = builder.Build();
  auto reader = OpenMft(volume.Open());
  return reader ? OpenChangeJournal(*reader) : std::nullopt;
}

TEST(ChangeJournal, AStaleEntryOfTheFolderOpensNoOtherFile) {
  for (const uint16_t sequence : {uint16_t{0}, uint16_t{2}, uint16_t{0xFFFF}}) {
    const auto volume = NtfsVolumeBuilder()
                            .Journal(kJournalId, kFirstUsn, Bytes(4'096))
                            .Record(kJournalRecord, JournalRecord(sequence));
    EXPECT_FALSE(JournalOf(volume).has_value()) << sequence;
  }
}

TEST(ChangeJournal, AnEntryWithTheSequenceNumberOfTheRecordOpensIt) {
  const auto volume = NtfsVolumeBuilder()
                          .Journal(kJournalId, kFirstUsn, Bytes(4'096))
                          .Record(kJournalRecord, JournalRecord(1));
  const auto journal = JournalOf(volume);
  ASSERT_TRUE(journal.has_value());
  EXPECT_EQ(journal->id, kJournalId);
  EXPECT_EQ(journal->nextUsn, 4'096);
}

// A journal of these pages, which begins with its first byte.
struct StoredPages {
  explicit StoredPages(const Bytes& pages)
      : volume(NtfsVolumeBuilder().Journal(kJournalId, 0, pages).Build()),
        reader(OpenMft(volume.Open())),
        journal(OpenChangeJournal(*reader)) {}

  VolumeDevice::Reply Read(std::span<std::byte> output) {
    return ReadChangeJournal(*reader->source, *journal, {}, output, false);
  }
  // References of the records that are given.
  std::vector<uint64_t> Files() {
    Bytes block(4'096);
    const auto reply = Read(block);
    UsnCursor cursor{.block = std::span(block).first(reply.bytes)};
    std::vector<uint64_t> files;
    while (const auto record = NextUsnRecord(cursor)) files.push_back(record->frn.value);
    return files;
  }

  MemoryVolume volume;
  std::optional<MftReader> reader;
  std::optional<ChangeJournal> journal;
};

void PutRecord(Bytes& pages, size_t offset, uint64_t frn) {
  const std::u16string_view name = u"name";
  PutUsnRecord(std::span(pages).subspan(offset),
               {.frn = FileReference(frn), .reason = 0x100, .name = std::as_bytes(std::span(name))}, 0);
}

using Files = std::vector<uint64_t>;

TEST(ChangeJournal, ARecordOfAVersionToComeIsPassedOver) {
  for (const unsigned version : {0u, 1u, 4u, 0xFFFFu}) {
    Bytes pages(4'096);
    PutRecord(pages, 0, 40);
    PutRecord(pages, 72, 41);
    StoreLe(std::span(pages), 4, static_cast<uint16_t>(version));
    EXPECT_EQ(StoredPages(pages).Files(), Files{41}) << version;
  }
}

TEST(ChangeJournal, ARecordWithoutRoomForItsFieldsIsPassedOver) {
  Bytes pages(2 * 4'096);
  PutRecord(pages, 4'096, 41);
  for (size_t offset = 0; offset < 4'096; offset += 32) {
    StoreLe(std::span(pages), offset, uint32_t{32});
    StoreLe(std::span(pages), offset + 4, uint16_t{2});
    StoreLe(std::span(pages), offset + 8, uint32_t{0x100});  // would be the reason of the one before
  }
  EXPECT_EQ(StoredPages(pages).Files(), Files{41});
}

TEST(ChangeJournal, ARecordWhoseNameDoesNotFitIsPassedOver) {
  for (const auto& [length, offset] :
       {std::pair<uint16_t, uint16_t>{14, 60}, {8, 66}, {0xFFFE, 60}, {2, 0xFFFF}}) {
    Bytes pages(4'096);
    PutRecord(pages, 0, 40);
    PutRecord(pages, 72, 41);
    StoreLe(std::span(pages), 56, length);
    StoreLe(std::span(pages), 58, offset);
    EXPECT_EQ(StoredPages(pages).Files(), Files{41}) << length << " " << offset;
  }
}

TEST(ChangeJournal, WhatHasNoRoomForARecordIsToldSo) {
  Bytes pages(4'096);
  PutRecord(pages, 0, 40);
  StoredPages stored(pages);
  for (const size_t size : {0u, 7u, 8u, 79u}) {
    Bytes output(size);
    EXPECT_EQ(stored.Read(output).error, kErrorMoreData) << size;
  }
  Bytes output(80);
  EXPECT_EQ(stored.Read(output).error, 0u);
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
