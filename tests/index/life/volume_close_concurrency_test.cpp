// Closing volumes whose disk does not answer any more.
#include <gmock/gmock.h>

#include <chrono>
#include <future>

#include "index/life/volume_life_fixture.h"
#include "support/gate.h"

namespace quilmark {
namespace {

// N: is followed by a monitor whose call to the device neither returns nor can be cancelled.
struct VolumeCloseConcurrency : VolumeLife {
  VolumeCloseConcurrency() {
    engine.closeLimits.mostMs = 1;
    MapN();
    QueueNtfsBuild();
    Disk().Queue(kFsctlReadUsnJournal, {.meanwhile = [this] { answer.Pass(); }});
    Start();
    EXPECT_TRUE(Disk().WaitForAsked(kFsctlReadUsnJournal, 1));
  }
  ~VolumeCloseConcurrency() override {
    answer.Open();
    EXPECT_TRUE(WaitForBackgroundJobs(60'000));
    EXPECT_EQ(Disk().OpenDevices(), 0) << "closed once the disk has answered";
  }
  DeviceScript& Disk() { return scripts.Script(u"N:"); }

  // Runs `work` where it may hang. False if it does: the disk then answers, so that the test ends.
  template <typename Work>
  bool ComesBack(Work work) {
    auto done = std::async(std::launch::async, work);
    const bool isBack = done.wait_for(std::chrono::minutes(1)) == std::future_status::ready;
    if (!isBack) answer.Open();
    return isBack;
  }

  // Runs `release` once the letter is gone. The notice has to end while the close waits for the disk.
  template <typename Work>
  void ExpectNoticeEndsBeforeClose(Work release) {
    engine.closeLimits.mostMs = 600'000;
    UnmapDrive(u'N');
    auto released = std::async(std::launch::async, release);
    EXPECT_TRUE(WaitFor([&] { return Disk().Notices().empty(); }));
    EXPECT_EQ(Disk().OpenDevices(), 1) << "the disk has yet to answer";
    answer.Open();
    EXPECT_TRUE(released.get());
  }

  Door answer;
};

TEST_F(VolumeCloseConcurrency, AnEjectDoesNotWaitForADiskThatHangs) {
  EXPECT_TRUE(ComesBack([&] { EXPECT_TRUE(ReleaseVolumesByMask(engine, 1u << 13)); }));
  EXPECT_FALSE(Volume(0).valid);
}

// The next volume of the letter must not be taken for the one that is gone.
TEST_F(VolumeCloseConcurrency, TheNoticeOfADriveThatIsGoneEndsBeforeTheClose) {
  ExpectNoticeEndsBeforeClose([&] { return ReleaseVolumesByMask(engine, 1u << 13); });
}

TEST_F(VolumeCloseConcurrency, TheNoticeOfANoticedVolumeThatIsGoneEndsBeforeTheClose) {
  ASSERT_EQ(Disk().Notices().size(), 1u);
  const uintptr_t notice = Disk().Notices().back();
  ExpectNoticeEndsBeforeClose([&] { return ReleaseNoticedVolume(engine, notice); });
}

TEST_F(VolumeCloseConcurrency, OtherDrivesAreSyncedBesideADiskThatHangs) {
  ReleaseVolumesByMask(engine, 1u << 13);
  MapE();
  for (int i = 0; i < 3; ++i) {
    SyncCurrentVolumesAsync(engine, window.Target());
    EXPECT_TRUE(ComesBack([&] { WaitFor([&] { return !engine.syncing.IsRunning(); }); }));
  }
  EXPECT_THAT(Drives(), testing::ElementsAre(u"E:", u"N:"));
  EXPECT_TRUE(Volume(0).valid);
  EXPECT_FALSE(Volume(1).valid);

  QueueNtfsBuild();
  answer.Open();
  Finish();
  EXPECT_TRUE(Volume(1).valid) << "synced once it was closed";
  CloseVolume(Volume(1));
}

// As a lost device leaves it.
TEST_F(VolumeCloseConcurrency, ASyncDoesNotWaitForADiskThatItClosesItself) {
  Volume(0).valid = false;
  MapE();
  for (int i = 0; i < 3; ++i) {
    SyncCurrentVolumesAsync(engine, window.Target());
    EXPECT_TRUE(ComesBack([&] { WaitFor([&] { return !engine.syncing.IsRunning(); }); }));
  }
  EXPECT_EQ(Volume(1).follower.closes, 1) << "one job waits, whatever the syncs";
  EXPECT_THAT(Drives(), testing::ElementsAre(u"E:", u"N:"));

  QueueNtfsBuild();
  answer.Open();
  Finish();
  EXPECT_TRUE(Volume(1).valid);
  CloseVolume(Volume(1));
}

TEST_F(VolumeCloseConcurrency, TheEndDoesNotWaitForADiskThatHangs) {
  VolumeIndex& volume = Volume(0);
  EXPECT_TRUE(ComesBack([&] { DropAllVolumes(engine); }));
  EXPECT_TRUE(engine.volumes.empty());
  answer.Open();
  Finish();
  CloseVolume(volume);
}

}  // namespace
}  // namespace quilmark
