#include "index/tables/tidy_names.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <future>
#include <limits>
#include <random>
#include <string>

#include "index/follow/usn_monitor.h"
#include "platform/bytes.h"
#include "platform/usn_record.h"
#include "support/gate.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

constexpr uint32_t kFiles = 10'000;

// Q: with files 1 to kFiles, in chunks of some 150 names.
class TidiedVolume : public testing::Test {
 protected:
  TidiedVolume() {
    volume_.names.chunkCapacity = volume_.names.usedInChunk = 8'000;
    for (uint32_t i = 1; i <= kFiles; ++i) AddFile(volume_, u"first name of a file");
  }

  void RenameAll(uint32_t first, uint32_t last, std::u16string_view name) {
    for (uint32_t i = first; i <= last; ++i) RenameRecord(volume_, i, kRootFrnOfTests, name);
  }

  void TidyToTheEnd() {
    TidyNames(volume_);
    while (volume_.tidying.isUnderWay) TidyNames(volume_);
  }

  // A block of the journal with one record more of file 1.
  std::vector<std::byte> Block() {
    const std::u16string_view name = u"file 1";
    std::vector<std::byte> block(sizeof(uint64_t) + UsnRecordLength(name.size()));
    PutUsnRecord(std::span(block).subspan(sizeof(uint64_t)),
                 {.frn = FileReference(volume_.records[1].frn),
                  .parentFrn = FileReference(kRootFrnOfTests),
                  .reason = kUsnReasonFileCreate,
                  .attributes = 0,
                  .name = std::as_bytes(std::span(name))},
                 0);
    return block;
  }

  uint32_t RenamedTexts() {
    return volume_.renamed[0].pool.textCount + volume_.renamed[1].pool.textCount;
  }

  std::unique_ptr<VolumeIndex> made_ = MakeTestVolume(u"Q:");
  VolumeIndex& volume_ = *made_;
};

TEST_F(TidiedVolume, FewNamesThatCameLaterStayWhereTheyAre) {
  RenameAll(1, kTextsPerPage - 1, u"later");
  TidyNames(volume_);
  EXPECT_EQ(volume_.tidying.moves, 0u);
  EXPECT_EQ(volume_.apartCount, kTextsPerPage - 1);
}

TEST_F(TidiedVolume, ManyGetTheirOwnPlace) {
  RenameAll(1, 5'000, u"later");
  for (uint32_t i = 10; i <= 100; ++i) MarkDeleted(volume_, i);
  TidyToTheEnd();
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
  EXPECT_EQ(volume_.apartCount, 0u);
  EXPECT_EQ(RenamedTexts(), 0u);
  EXPECT_EQ(NameOf(volume_.records[1]), u"later");
  EXPECT_EQ(NameOf(volume_.records[10]), u"later");
  EXPECT_TRUE(volume_.records[10].deleted);
  EXPECT_EQ(NameOf(volume_.records[5'001]), u"first name of a file");
}

TEST_F(TidiedVolume, EachBlockOfTheJournalTidiesAChunk) {
  RenameAll(1, 5'000, u"later");
  const auto block = Block();
  for (int i = 1; i <= 5; ++i) {
    ApplyJournalBlock(volume_, block);
    EXPECT_EQ(volume_.tidying.moves, static_cast<uint32_t>(i));
    EXPECT_EQ(FindBrokenInvariant(volume_), "");
  }
  while (volume_.tidying.isUnderWay) ApplyJournalBlock(volume_, block);
  EXPECT_EQ(RenamedTexts(), 0u);
}

TEST_F(TidiedVolume, MemoryStaysBoundedWhateverIsRenamed) {
  const size_t before = MemoryOf(volume_);
  const auto block = Block();
  for (uint32_t round = 0; round < 200; ++round) {
    const uint32_t first = 1 + round % 9 * 1'000;
    RenameAll(first, first + 999, round / 9 % 2 == 0 ? u"one of the names" : u"one of the other names");
    for (int i = 0; i < 20; ++i) ApplyJournalBlock(volume_, block);
  }
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
  EXPECT_LT(MemoryOf(volume_), before + before / 2);
}

TEST_F(TidiedVolume, ChunksWithoutARenamedFileAreLeftAlone) {
  RenameAll(1, 5'000, u"later");
  const char16_t* const untouched = volume_.records[7'000].name;
  TidyToTheEnd();
  EXPECT_EQ(volume_.records[7'000].name, untouched);
}

TEST_F(TidiedVolume, WhatIsRenamedMeanwhileStaysToBeTidied) {
  RenameAll(1, 5'000, u"later");
  TidyNames(volume_);
  TidyNames(volume_);
  RenameRecord(volume_, 1, kRootFrnOfTests, u"in a chunk that is done");
  RenameRecord(volume_, 4'900, kRootFrnOfTests, u"in one to come");
  RenameRecord(volume_, 4'901, kRootFrnOfTests, std::u16string_view(u"o\0dd", 4));
  MarkDeleted(volume_, 4'902);
  TidyToTheEnd();
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
  EXPECT_EQ(volume_.apartCount, 2u);
  EXPECT_EQ(RenamedTexts(), 2u);
  EXPECT_EQ(NameOf(volume_.records[1]), u"in a chunk that is done");
  EXPECT_EQ(NameOf(volume_.records[4'900]), u"in one to come");
  EXPECT_EQ(NameOf(volume_.records[4'901]), std::u16string_view(u"o\0dd", 4));
  RenameRecord(volume_, 4'902, kRootFrnOfTests, u"later");
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
}

TEST_F(TidiedVolume, NamesGoOnToBeAddedBehindTheLastChunk) {
  RenameAll(1, kFiles, u"a name that is much longer than the one the file had at first");
  TidyToTheEnd();
  for (int i = 0; i < 1'000; ++i) AddFile(volume_, u"new");
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
  RenameAll(1, kFiles, u"short");
  TidyToTheEnd();
  const size_t memory = MemoryOf(volume_.names);
  for (int i = 0; i < 1'000; ++i) AddFile(volume_, u"new");
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
  EXPECT_LT(MemoryOf(volume_.names), memory + 1'000 * 2 * sizeof(u"new") + 20'000);
}

TEST_F(TidiedVolume, ItIsTriedAgainWhereMemoryRunsOut) {
  RenameAll(1, kFiles, u"later");
  volume_.names.chunkCapacity = std::numeric_limits<size_t>::max() / 4;  // of the last chunk alone
  for (int i = 0; i < 200; ++i) TidyNames(volume_);
  EXPECT_TRUE(volume_.tidying.isUnderWay);
  EXPECT_EQ(volume_.tidying.moves, volume_.names.chunks.size() - 2);  // the root has the first one
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
  volume_.names.chunkCapacity = 8'000;
  TidyNames(volume_);
  EXPECT_FALSE(volume_.tidying.isUnderWay);
  EXPECT_EQ(volume_.apartCount, 0u);
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
}

TEST_F(TidiedVolume, AStepThatAnEditCameBetweenChangesNothing) {
  RenameAll(1, 6'000, u"later");
  MarkDeleted(volume_, 5'000);
  const std::function<void()> edits[] = {
      [&] { RenameRecord(volume_, 3, kRootFrnOfTests, u"renamed meanwhile"); },
      [&] { RenameRecord(volume_, 3, kRootFrnOfTests, std::u16string_view(u"o\0dd", 4)); },
      [&] { RenameRecord(volume_, 9'000, kRootFrnOfTests, u"renamed meanwhile"); },
      [&] { MarkDeleted(volume_, 4); },
      [&] { RenameRecord(volume_, 4, kRootFrnOfTests, u"later"); },  // is back
      [&] { AddFile(volume_, u"new"); },
      [&] { ResetVolumeTables(volume_); },
  };
  for (const auto& edit : edits) {
    auto step = PrepareTidying(volume_);
    ASSERT_TRUE(step.has_value());
    edit();
    const uint32_t moves = volume_.tidying.moves;
    EXPECT_FALSE(FinishTidying(volume_, *step));
    EXPECT_EQ(volume_.tidying.moves, moves);
    EXPECT_FALSE(volume_.tidying.isUnderWay);
    EXPECT_EQ(FindBrokenInvariant(volume_), "");
  }
}

TEST_F(TidiedVolume, WhatWasEditedBetweenIsTidiedBehindTheNextBlock) {
  RenameAll(1, 5'000, u"later");
  auto step = PrepareTidying(volume_);
  ASSERT_TRUE(step.has_value());
  RenameRecord(volume_, 3, kRootFrnOfTests, u"a longer name than before");
  EXPECT_FALSE(FinishTidying(volume_, *step));
  TidyToTheEnd();
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
  EXPECT_EQ(NameOf(volume_.records[2]), u"later");
  EXPECT_EQ(NameOf(volume_.records[3]), u"a longer name than before");
  EXPECT_EQ(volume_.apartCount, 0u);
}

TEST_F(TidiedVolume, TheWorkOfAStepIsDoneBesideASearch) {
  RenameAll(1, kFiles, u"later");
  for (int i = 0; i < 200 && volume_.tidying.nextChunk + 1 < volume_.names.chunks.size(); ++i) {
    TidyNames(volume_);
  }
  // Whether there is memory for a chunk is known where it is written, which is all that happens here.
  volume_.names.chunkCapacity = std::numeric_limits<size_t>::max() / 4;
  Gate search(volume_.indexLock, Gate::Stops::kWriters);
  auto step = std::async(std::launch::async, [&] { TidyNames(volume_); });
  EXPECT_EQ(step.wait_for(std::chrono::minutes(1)), std::future_status::ready);
  search.Open();
  step.wait();
  EXPECT_TRUE(volume_.tidying.isUnderWay);
}

TEST_F(TidiedVolume, ANewBuildForgetsWhatWasUnderWay) {
  RenameAll(1, 5'000, u"later");
  TidyNames(volume_);
  ResetVolumeTables(volume_);
  EXPECT_FALSE(volume_.tidying.isUnderWay);
  EXPECT_EQ(RenamedTexts(), 0u);
  TidyNames(volume_);
  EXPECT_EQ(FindBrokenInvariant(volume_), "");
}

TEST_F(TidiedVolume, ANameIsAsSeenUntilTheFileIsRenamed) {
  const SeenName moved = SeeName(volume_, volume_.records[1]);
  const SeenName renamed = SeeName(volume_, volume_.records[2]);
  const SeenName renamedAndMoved = SeeName(volume_, volume_.records[3]);
  RenameRecord(volume_, 2, kRootFrnOfTests, u"other");
  RenameRecord(volume_, 2, kRootFrnOfTests, u"first name of a file");
  EXPECT_FALSE(IsNameAsSeen(volume_, volume_.records[2], renamed));
  RenameAll(3, 5'000, u"later");
  TidyToTheEnd();
  EXPECT_NE(volume_.records[1].name, moved.text);
  EXPECT_TRUE(IsNameAsSeen(volume_, volume_.records[1], moved));
  EXPECT_FALSE(IsNameAsSeen(volume_, volume_.records[3], renamedAndMoved));
}

}  // namespace
}  // namespace quilmark
