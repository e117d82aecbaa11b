#include "shell/actions/chosen_file.h"

#include <gtest/gtest.h>

#include <future>
#include <thread>
#include <vector>

#include "support/gate.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

constexpr uint64_t kDirFrn = 500;

// Q: with \dir\a and \b.
class AChosenFile : public testing::Test {
 protected:
  MatchItem HitOf(uint32_t index) { return {&volume_, index}; }
  bool IsDeleted(uint32_t index) { return KindOfLocked(volume_, index)->isDeleted; }

  SearchHarness harness_;
  VolumeIndex& volume_ = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  uint32_t dir_ = AddFolder(volume_, u"dir", kRootFrnOfTests, kDirFrn);
  uint32_t a_ = AddFile(volume_, u"a", kDirFrn), b_ = AddFile(volume_, u"b");
};

TEST_F(AChosenFile, HasItsPath) {
  EXPECT_EQ(SeeFile(HitOf(a_)).value().path, u"Q:\\dir\\a");
  EXPECT_EQ(SeeFile(HitOf(dir_)).value().path, u"Q:\\dir");
}

TEST_F(AChosenFile, IsNoneWhereItIsGone) {
  MarkDeleted(volume_, a_);
  EXPECT_FALSE(SeeFile(HitOf(a_)).has_value());
  EXPECT_FALSE(SeeFile(HitOf(1'000)).has_value());
  EXPECT_FALSE(SeeFile({}).has_value());
  volume_.busy = true;
  EXPECT_FALSE(SeeFile(HitOf(b_)).has_value());
  volume_.busy = false;
  volume_.valid = false;
  EXPECT_FALSE(SeeFile(HitOf(b_)).has_value());
}

// A paint would go on without it after a few milliseconds.
TEST_F(AChosenFile, WaitsForWhoeverWrites) {
  Gate writer(volume_.indexLock, Gate::Stops::kAll);
  auto seen = std::async(std::launch::async, [&] { return SeeFile(HitOf(a_)); });
  EXPECT_EQ(seen.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
  writer.Open();
  EXPECT_EQ(seen.get().value().path, u"Q:\\dir\\a");
}

TEST_F(AChosenFile, IsToldFromAnotherInItsPlace) {
  const ChosenFile file = SeeFile(HitOf(a_)).value();
  EXPECT_TRUE(IsStillThere(file));
  RenameRecord(volume_, dir_, kRootFrnOfTests, u"elsewhere");
  EXPECT_FALSE(IsStillThere(file));
  RenameRecord(volume_, dir_, kRootFrnOfTests, u"dir");
  EXPECT_TRUE(IsStillThere(file));
  volume_.records[a_].frn = 900;
  EXPECT_FALSE(IsStillThere(file));
  volume_.records[a_].frn = file.frn;
  MarkDeleted(volume_, a_);
  EXPECT_FALSE(IsStillThere(file));
  ResetVolumeTables(volume_);
  EXPECT_FALSE(IsStillThere(file));
}

TEST_F(AChosenFile, HasTheRecordOfItsFolder) {
  EXPECT_EQ(FolderOf(SeeFile(HitOf(a_)).value()), HitOf(dir_));
  EXPECT_EQ(FolderOf(SeeFile(HitOf(b_)).value()), HitOf(0)) << "the root";
  const ChosenFile file = SeeFile(HitOf(a_)).value();
  MarkDeleted(volume_, dir_);
  EXPECT_FALSE(FolderOf(file).has_value());
  const ChosenFile orphan = SeeFile(HitOf(AddFile(volume_, u"c", 12'345))).value();
  EXPECT_FALSE(FolderOf(orphan).has_value());
  ResetVolumeTables(volume_);
  EXPECT_FALSE(FolderOf(file).has_value());
}

TEST_F(AChosenFile, IsMarkedDeletedWithAllBelow) {
  VolumeIndex& other = *AddVolume(Engine(), MakeTestVolume(u"R:"));
  const uint32_t there = AddFile(other, u"x");
  MarkDeletedInIndex(std::vector{SeeFile(HitOf(dir_)).value(), SeeFile({&other, there}).value()});
  EXPECT_TRUE(IsDeleted(dir_));
  EXPECT_TRUE(IsDeleted(a_));
  EXPECT_FALSE(IsDeleted(b_));
  EXPECT_TRUE(KindOfLocked(other, there)->isDeleted);
}

// The journal was faster, or the volume was built anew.
TEST_F(AChosenFile, IsNotMarkedWhereAnotherHasItsPlace) {
  const std::vector file = {SeeFile(HitOf(b_)).value()};
  RenameRecord(volume_, b_, kDirFrn, u"$RB");
  MarkDeletedInIndex(file);
  EXPECT_FALSE(IsDeleted(b_));
  RenameRecord(volume_, b_, kRootFrnOfTests, u"b");
  ++volume_.builds;
  MarkDeletedInIndex(file);
  EXPECT_FALSE(IsDeleted(b_));
  --volume_.builds;
  volume_.busy = true;
  MarkDeletedInIndex(file);
  volume_.busy = false;
  EXPECT_FALSE(IsDeleted(b_));
  MarkDeletedInIndex(file);
  EXPECT_TRUE(IsDeleted(b_));
}

}  // namespace
}  // namespace quilmark
