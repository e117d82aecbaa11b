#include "platform/ntfs/change_journal.h"

#include <gtest/gtest.h>

#include "platform/bytes.h"
#include "support/ntfs_builder.h"

namespace quilmark {
namespace {

constexpr uint64_t kJournalRecord = 24, kJournalId = 0x77, kFirstUsn = 16 * 4'096;

// A file that looks like the journal, in the record where the folder's entry leads.
Bytes JournalRecord(uint16_t sequence) {
  Bytes max(32);
  StoreLe(std::span(max), 16, kJournalId);
  return RecordBuilder()
      .FileName(MakeReference(kExtendRecord, 1), u"$UsnJrnl")
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

}  // namespace
}  // namespace quilmark
