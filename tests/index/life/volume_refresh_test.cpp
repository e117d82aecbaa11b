// The refresh by hand of volumes that no journal keeps up to date.
#include <gmock/gmock.h>

#include <mutex>
#include <tuple>

#include "index/life/volume_life_fixture.h"
#include "platform/utf.h"
#include "support/held_job.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(VolumeLife, OnlyAWalkedVolumeNeedsARefreshByHand) {
  MapN();
  QueueNtfsBuild();
  Start();
  EXPECT_FALSE(HasNonNtfsVolume(engine));

  MapE();
  Sync();
  EXPECT_TRUE(HasNonNtfsVolume(engine));

  UnmapDrive(u'E');
  EXPECT_FALSE(HasNonNtfsVolume(engine));
  EXPECT_FALSE(Volume(0).valid) << "its letter is gone";
}

TEST_F(VolumeLife, RefreshWalksAgainAndCounts) {
  MapE();
  MapF();
  Start();
  Posted();
  folder.MakeFile("e/later.txt");

  RefreshAllNonNtfsAsync(engine, window.Target());
  Finish();

  EXPECT_EQ(Volume(0).records.size(), 2u);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1033u, 0u, 0), std::tuple(1031u, 2u, 0)));
  const std::string fileSystem = ToUtf8(Volume(0).fileSystem);
  EXPECT_EQ(debugOutput, "[Quilmark][ManualRefresh]Refresh the index of non-NTFS drives.E:(" +
                             fileSystem + ") F:(" + fileSystem + ") E::OK(2) F::OK(1) \n");
}

TEST_F(VolumeLife, RefreshAddsADriveThatTheSyncDidNotTakeInItsPlace) {
  MapF();
  Start();
  Posted();
  MapE();
  HeldJob hanging(engine.syncing);
  RefreshAllNonNtfsAsync(engine, window.Target());
  ASSERT_TRUE(WaitFor([&] { return CopyVolumes(engine).size() == 2; }));
  hanging.End();
  Finish();

  EXPECT_THAT(Drives(), ElementsAre(u"E:", u"F:"));
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1031u, 2u, 0)));
}

TEST_F(VolumeLife, RefreshCountsWhatFails) {
  folder.MakeFolder("empty");
  MapE();
  MapDrive(u'G', folder.PathOf(u"empty"));
  Start();
  Posted();

  RefreshAllNonNtfsAsync(engine, window.Target());
  Finish();

  EXPECT_THAT(Posted(), testing::Contains(std::tuple(1031u, 1u, 1)));
  EXPECT_THAT(debugOutput, HasSubstr("G::FAIL "));
}

TEST_F(VolumeLife, RefreshAskedForMeanwhileRunsOnceAgain) {
  MapE();
  Start();
  Posted();

  {
    const std::scoped_lock held(Volume(0).indexLock);
    for (int i = 0; i < 3; ++i) RefreshAllNonNtfsAsync(engine, window.Target());
  }
  Finish();
  const auto refreshed = std::tuple(1031u, 1u, 0);
  EXPECT_THAT(Posted(), testing::Contains(refreshed).Times(2));
}

TEST_F(VolumeLife, RefreshDropsAWalkedVolumeThatIsGoneAndKeepsNtfs) {
  MapE();
  MapF();
  MapN();
  QueueNtfsBuild();
  Start();
  VolumeIndex* const gone = &Volume(0);
  UnmapDrive(u'E');
  UnmapDrive(u'N');

  RefreshAllNonNtfsAsync(engine, window.Target());
  Finish();

  EXPECT_THAT(Drives(), ElementsAre(u"F:", u"N:"));
  EXPECT_EQ(BuildPathLocked(*gone, 0), u"E:\\one.txt") << "results that name it stay good";
  EXPECT_FALSE(gone->valid);

  RefreshAllNonNtfsAsync(engine, window.Target());
  Finish();
  EXPECT_EQ(BuildPathLocked(*gone, 0), u"E:") << "the next refresh frees its tables";
}

TEST_F(VolumeLife, RefreshWithoutAWalkedDriveSaysSo) {
  MapN();
  QueueNtfsBuild();
  Start();
  Posted();

  RefreshAllNonNtfsAsync(engine, window.Target());
  Finish();

  EXPECT_EQ(debugOutput, "[Quilmark][ManualRefresh]No non-NTFS volumes detected for manual refresh.\n");
  EXPECT_THAT(Posted(), testing::Contains(std::tuple(1031u, 0u, 0)));
}

}  // namespace
}  // namespace quilmark
