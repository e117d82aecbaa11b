// Drives that come and go, by notice of the system and by looking.
#include <gmock/gmock.h>

#include <atomic>
#include <tuple>

#include "index/engine/volume_list.h"
#include "index/life/volume_life_fixture.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(VolumeLife, TheWatcherTellsOfLettersThatComeAndGo) {
  MapE();
  const uint32_t bitE = 1u << 4, bitF = 1u << 5;
  EXPECT_EQ(WatchDrivesOnce(bitE, window.Target()), bitE);
  EXPECT_THAT(Posted(), IsEmpty());

  MapF();
  EXPECT_EQ(WatchDrivesOnce(bitE, window.Target()), bitE | bitF);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1025u, 1u, 0)));

  UnmapDrive(u'E');
  EXPECT_EQ(WatchDrivesOnce(bitE | bitF, window.Target()), bitF);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1032u, 0u, 0)));

  MapE();
  UnmapDrive(u'F');
  EXPECT_EQ(WatchDrivesOnce(bitF, window.Target()), bitE);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1025u, 1u, 0), std::tuple(1032u, 0u, 0)));
}

TEST_F(VolumeLife, ALetterWithoutAMediumIsToldAsLostOnceAndRemovesNothing) {
  MapE();
  MapDrive(u'G', folder.PathOf(u"missing"));
  Start();
  Posted();

  const uint32_t known = WatchDrivesOnce(LogicalDriveMask(), window.Target());

  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1032u, 0u, 0)));
  EXPECT_FALSE(RemoveUnavailableVolumes(engine));
  EXPECT_EQ(WatchDrivesOnce(known, window.Target()), known);
  EXPECT_THAT(Posted(), IsEmpty());
}

TEST_F(VolumeLife, AStickWithoutAJournalThatIsPluggedInIsWalkedAndTold) {
  MapF();
  Start();
  engine.readVolumeInfo = [](char16_t) { return std::optional(VolumeInfo{.fileSystem = u"FAT32"}); };
  const uint32_t known = WatchDrivesOnce(1u << 5, window.Target());
  Posted();

  MapE();
  EXPECT_EQ(WatchDrivesOnce(known, window.Target()), known | 1u << 4);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1025u, 1u, 0)));
  Sync();
  engine.readVolumeInfo = ReadVolumeInfo;

  ASSERT_THAT(Drives(), ElementsAre(u"E:", u"F:"));
  EXPECT_EQ(Volume(0).fileSystem, u"FAT32");
  EXPECT_EQ(BuildPathLocked(Volume(0), 0), u"E:\\one.txt");
  EXPECT_FALSE(Volume(0).follower.monitorRunning);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1033u, 0u, 0)));
}

TEST_F(VolumeLife, AnArrivalSyncsIfOneOfItsLettersCanBeRead) {
  MapE();

  SyncArrivedVolumesAsync(engine, window.Target(), 1u << 6);
  Finish();
  EXPECT_THAT(Drives(), IsEmpty()) << "no such drive";

  SyncArrivedVolumesAsync(engine, window.Target(), 1u << 4 | 1u << 6);
  Finish();
  EXPECT_THAT(Drives(), ElementsAre(u"E:"));
}

TEST(ArrivalTurn, SeveralNoticesOfOneArrivalAreOneSync) {
  std::atomic<uint64_t> last = 0;
  EXPECT_TRUE(TakeArrivalTurn(last, 1'000));
  EXPECT_FALSE(TakeArrivalTurn(last, 1'000));
  EXPECT_FALSE(TakeArrivalTurn(last, 1'500));
  EXPECT_TRUE(TakeArrivalTurn(last, 1'501));
  EXPECT_EQ(last, 1'501u);
}

}  // namespace
}  // namespace quilmark
