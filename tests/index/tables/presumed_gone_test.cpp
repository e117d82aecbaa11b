#include "index/tables/presumed_gone.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <vector>

#include "support/volumes.h"

namespace quilmark {
namespace {

constexpr uint64_t kDirFrn = 501, kSubFrn = 502, kOtherFrn = 503;

// C: with \dir\a, \dir\sub\b, \other\c and \d.
class PresumedGoneOf : public testing::Test {
 protected:
  void Presume(std::initializer_list<uint32_t> indices) {
    PresumeGone(volume_, std::vector<uint32_t>(indices));
    EXPECT_EQ(FindBrokenInvariant(volume_), "");
  }
  // The records that are marked, by name.
  std::u16string Deleted() const {
    std::u16string names;
    for (uint32_t index = 0; index < volume_.records.size(); ++index) {
      if (!volume_.records[index].deleted) continue;
      if (!names.empty()) names += u' ';
      names += NameOf(volume_.records[index]);
    }
    return names;
  }
  // As the journal does where a file has another name.
  void Revive(uint32_t index, std::u16string_view name, uint64_t parent = kRootFrnOfTests) {
    RenameRecord(volume_, index, parent, name);
    WithdrawGone(volume_, volume_.records[index].frn);
    EXPECT_EQ(FindBrokenInvariant(volume_), "");
  }
  void Confirm(uint32_t index) {
    MarkDeleted(volume_, index);
    ConfirmGone(volume_, volume_.records[index].frn);
  }
  bool NothingIsRemembered() const {
    return volume_.presumedGone.with.empty() && volume_.presumedGone.below.empty();
  }

  std::unique_ptr<VolumeIndex> owner_ = MakeTestVolume();
  VolumeIndex& volume_ = *owner_;
  // Out of order: a folder may stand behind what it holds.
  uint32_t a_ = AddFile(volume_, u"a", kDirFrn), b_ = AddFile(volume_, u"b", kSubFrn);
  uint32_t dir_ = AddFolder(volume_, u"dir", kRootFrnOfTests, kDirFrn);
  uint32_t sub_ = AddFolder(volume_, u"sub", kDirFrn, kSubFrn);
  uint32_t other_ = AddFolder(volume_, u"other", kRootFrnOfTests, kOtherFrn);
  uint32_t c_ = AddFile(volume_, u"c", kOtherFrn), d_ = AddFile(volume_, u"d");
};

TEST_F(PresumedGoneOf, FilesMarksThemAlone) {
  Presume({a_, d_});
  EXPECT_EQ(Deleted(), u"a d");
  EXPECT_TRUE(NothingIsRemembered());
}

TEST_F(PresumedGoneOf, AFolderMarksAllBelow) {
  Presume({dir_});
  EXPECT_EQ(Deleted(), u"a b dir sub");
}

TEST_F(PresumedGoneOf, SeveralFoldersMarksAllBelowEach) {
  Presume({other_, dir_, d_});
  EXPECT_EQ(Deleted(), u"a b dir sub other c d");
}

TEST_F(PresumedGoneOf, NothingChangesNothing) {
  Presume({});
  Presume({volume_.records.size(), 0xFFFF'FFFF});
  EXPECT_EQ(Deleted(), u"");
}

TEST_F(PresumedGoneOf, AFileForgetsItsAttributes) {
  const uint64_t frn = volume_.records[a_].frn;
  volume_.attrs[frn] = {.size = 5, .valid = true};
  volume_.mftSizes[frn] = {5, 8};
  volume_.folderSizesDirty = false;
  const uint64_t generation = AttrCacheGeneration;
  Presume({dir_});
  EXPECT_TRUE(volume_.attrs.empty());
  EXPECT_TRUE(volume_.mftSizes.empty());
  EXPECT_TRUE(volume_.folderSizesDirty);
  EXPECT_GT(AttrCacheGeneration, generation);
}

// The folder has gone to the Recycle Bin: what it holds has kept its references, and no news comes of
// it.
TEST_F(PresumedGoneOf, AFolderThatLivesBringsBackWhatItHolds) {
  Presume({dir_});
  Revive(dir_, u"$RX", kOtherFrn);
  EXPECT_EQ(Deleted(), u"");
  EXPECT_EQ(BuildPath(volume_, b_), u"C:\\other\\$RX\\sub\\b");
  EXPECT_TRUE(NothingIsRemembered());
}

TEST_F(PresumedGoneOf, AFolderInAnotherThatWasChosenTooComesBackWithIt) {
  for (const auto& chosen : {std::vector{dir_, sub_, b_}, std::vector{b_, sub_, dir_}}) {
    PresumeGone(volume_, chosen);
    EXPECT_EQ(Deleted(), u"a b dir sub");
    Revive(dir_, u"dir");
    EXPECT_EQ(Deleted(), u"");
  }
}

TEST_F(PresumedGoneOf, AFolderLeavesDeadWhatTheJournalHasCalledDeleted) {
  Presume({dir_});
  Confirm(a_);
  Revive(dir_, u"$RX");
  EXPECT_EQ(Deleted(), u"a");
}

TEST_F(PresumedGoneOf, AFolderLeavesAloneWhatHasAnotherName) {
  Presume({dir_});
  Revive(a_, u"moved", kOtherFrn);
  EXPECT_EQ(Deleted(), u"b dir sub");
  Confirm(a_);  // and is gone for good, in its new place
  Revive(dir_, u"$RX");
  EXPECT_EQ(Deleted(), u"moved");
}

TEST_F(PresumedGoneOf, AFolderThatIsConfirmedForgetsThem) {
  Presume({dir_});
  Confirm(dir_);
  EXPECT_TRUE(NothingIsRemembered());
  EXPECT_EQ(Deleted(), u"a b dir sub");
}

TEST_F(PresumedGoneOf, AFolderIsPresumedOnceMore) {
  Presume({dir_});
  Revive(dir_, u"$RX");
  Confirm(a_);
  Presume({dir_});
  Revive(dir_, u"dir");
  EXPECT_EQ(Deleted(), u"a");
}

TEST_F(PresumedGoneOf, ACircleOfFoldersEnds) {
  RenameRecord(volume_, other_, 900, u"other");
  const uint32_t round = AddFolder(volume_, u"round", kOtherFrn, 900);
  Presume({dir_});
  EXPECT_EQ(Deleted(), u"a b dir sub");
  Presume({round});
  EXPECT_EQ(Deleted(), u"a b dir sub other c round");
  Revive(round, u"round", kOtherFrn);
  EXPECT_EQ(Deleted(), u"a b dir sub");
}

TEST_F(PresumedGoneOf, AVolumeIsForgottenWhereItIsBuiltAnew) {
  Presume({dir_});
  ResetVolumeTables(volume_);
  EXPECT_TRUE(NothingIsRemembered());
}

}  // namespace
}  // namespace quilmark
