#include "search/attributes/attr_replay.h"

#include <gtest/gtest.h>

#include "config/config_directory.h"
#include "index/follow/data_changes.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "search/attributes/attr_cache_file.h"
#include "search/attributes/attr_positions.h"
#include "search/attributes/data_changes_fixture.h"
#include "support/gives.h"

namespace quilmark {
namespace {

// The cache of a run, and what the next one believes of it.
class CacheOverARestart : public DataChangesOfAVolume {
 protected:
  CacheOverARestart() {
    Build(1'000);
    Ask();
    Ask(Insist::kOnDisk, 2);
    TheAttrCacheFile().isLoaded = true;
    SaveAttrCacheAtEnd(Engine());
  }
  // From here on the journal is read by who loads the cache, and by no monitor.
  void EndTheRun() {
    CloseVolume(volume);
    monitorPauses = {.afterReadMs = 60'000, .afterErrorMs = 60'000};
  }
  void Restart(uint64_t journalId = 77) {
    CloseVolume(volume);
    Build(5'000, journalId);
    LoadAttrCache(Engine());
  }
  std::u16string PositionsPath() const { return ConfigPath(u"attrpositions.v1.bin"); }
  bool IsShownOnly(uint64_t frn) const {
    const auto glance = GlanceAtAttr(volume, frn);
    return glance && glance->entry.valid && glance->entry.stale;
  }
  bool Holds(uint64_t frn) {
    AttrEntry entry;
    return Gives(PeekAttr(volume, frn), entry);
  }
};

TEST_F(CacheOverARestart, IsBelievedWhereNothingChanged) {
  Restart();
  EXPECT_TRUE(Holds(kFile));
  EXPECT_TRUE(Holds(kOther));
}

TEST_F(CacheOverARestart, LeavesOutWhatChangedMeanwhile) {
  EndTheRun();
  script.Queue(kReadOfDataChanges,
               {.output = UsnBlockBuilder(3'000).Record(kFile, kDocs, u"a.txt", kExtend)});
  Restart();
  EXPECT_FALSE(Holds(kFile));
  EXPECT_TRUE(Holds(kOther));
}

TEST_F(CacheOverARestart, LeavesOutWhatChangesWhileItIsLoaded) {
  EndTheRun();
  script.Queue(kReadOfDataChanges, {.output = UsnBlockBuilder(3'000)});
  script.Queue(kReadOfDataChanges,
               {.output = UsnBlockBuilder(4'000).Record(kOther, kDocs, u"b.txt", kBasicInfo)});
  Restart();
  EXPECT_TRUE(Holds(kFile));
  EXPECT_FALSE(Holds(kOther));
}

TEST_F(CacheOverARestart, OfAnotherJournalIsNotBelieved) {
  Restart(78);
  EXPECT_FALSE(Holds(kFile));
  EXPECT_FALSE(Holds(kOther));
}

TEST_F(CacheOverARestart, WhosePositionTheJournalHasLostIsNotBelieved) {
  EndTheRun();
  script.QueueError(kReadOfDataChanges, kErrorJournalEntryDeleted);
  Restart();
  EXPECT_FALSE(Holds(kFile));
}

TEST_F(CacheOverARestart, BeginsWhereTheLastRunHadLooked) {
  EXPECT_EQ(LoadAttrPositions(),
            (std::vector<AttrPosition>{{.letter = u'N', .journalId = 77, .usn = 1'000}}));
}

TEST_F(CacheOverARestart, HasNoPositionOfAVolumeThatIsBeingBuilt) {
  EXPECT_TRUE(PositionOf(volume).has_value());
  const BusyMark busy(volume);
  EXPECT_FALSE(PositionOf(volume).has_value());
}

TEST_F(CacheOverARestart, WithoutAFileOfPositionsIsBelieved) {
  ASSERT_TRUE(RemoveFile(PositionsPath()));
  Restart();
  EXPECT_TRUE(Holds(kFile));
  EXPECT_TRUE(Holds(kOther));
}

// As a program leaves it that is ended while it writes, and as one of another version does.
TEST_F(CacheOverARestart, WithPositionsThatCannotBeReadIsShownAndNotBelieved) {
  const std::string bytes = ReadFileBytes(PositionsPath()).value();
  const std::string unmarked = std::string(12, '\0') + bytes.substr(12);
  for (const std::string& broken :
       {bytes.substr(0, 20), unmarked, std::string(), std::string(99'999, 'x')}) {
    ASSERT_TRUE(WriteFileBytes(PositionsPath(), broken));
    Restart();
    EXPECT_FALSE(Holds(kFile)) << broken.size();
    EXPECT_TRUE(IsShownOnly(kFile)) << broken.size();
  }
}

TEST_F(CacheOverARestart, WithoutAPositionOfItsLetterIsShownAndNotBelieved) {
  SaveAttrPositions(std::vector<AttrPosition>{{.letter = u'M', .journalId = 77, .usn = 1'000}});
  Restart();
  EXPECT_FALSE(Holds(kFile));
  EXPECT_TRUE(IsShownOnly(kFile));
  EXPECT_EQ(Ask().size, 10);
  EXPECT_TRUE(Holds(kFile)) << "asked anew";
}

TEST_F(CacheOverARestart, DoesNotSaveWhatIsStale) {
  JournalSays(2'000, kFile, kExtend);
  SaveAttrCacheAtEnd(Engine());
  Restart();
  EXPECT_FALSE(Holds(kFile));
  EXPECT_TRUE(Holds(kOther));
}

}  // namespace
}  // namespace quilmark
