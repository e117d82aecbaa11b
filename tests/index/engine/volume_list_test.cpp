#include "index/engine/volume_list.h"

#include <gmock/gmock.h>

#include "index/build/ntfs_volume.h"
#include "platform/debug_output.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

// Whether the engine could be looked at, and was ready, when a volume was closed. The close is known by
// its line in the debugger: it fails.
struct SeenAtClose {
  SearchEngine* engine = nullptr;
  int closes = 0;
  bool listWasFree = false;
  bool wasReady = false;
};
SeenAtClose seen;

void LookAtClose(std::string_view) {
  ++seen.closes;
  seen.wasReady = seen.engine->ready;
  seen.listWasFree = seen.engine->volumesMutex.try_lock();
  if (seen.listWasFree) seen.engine->volumesMutex.unlock();
}

// A list that has a volume of N: already.
struct VolumeList : testing::Test {
  ScriptedVolumes scripts;
  SearchEngine engine;

  VolumeList() {
    auto first = std::make_unique<VolumeIndex>();
    first->drive = u"N:";
    AddUnlessPresent(engine, std::move(first));
    seen = {.engine = &engine};
    SetDebugOutputListener(LookAtClose);
  }
  ~VolumeList() override { SetDebugOutputListener(nullptr); }

  // With an open device, whose close fails.
  std::unique_ptr<VolumeIndex> Second(std::u16string_view drive) {
    auto volume = std::make_unique<VolumeIndex>();
    volume->drive = drive;
    volume->follower.TakeDevice(scripts.Open(u"N:"), drive);
    scripts.Script(u"N:").FailClose(kErrorInvalidHandle);
    return volume;
  }
  int OpenDevices() { return scripts.Script(u"N:").OpenDevices(); }
};

TEST_F(VolumeList, TheLoserOfADriveIsClosedOutsideTheLock) {
  scripts.Script(u"N:");
  VolumeIndex* const winner = CopyVolumes(engine)[0];

  AddUnlessPresent(engine, Second(u"n:"));

  EXPECT_THAT(CopyVolumes(engine), testing::ElementsAre(winner));
  EXPECT_EQ(OpenDevices(), 0);
  EXPECT_EQ(seen.closes, 1);
  EXPECT_TRUE(seen.listWasFree);
  EXPECT_FALSE(engine.ready) << "for the end of the sync to say";
}

TEST_F(VolumeList, AVolumeOfAnotherDriveIsTaken) {
  scripts.Script(u"N:");
  AddUnlessPresent(engine, Second(u"M:"));
  EXPECT_EQ(engine.volumes.size(), 2u);
  EXPECT_EQ(OpenDevices(), 1);
  CloseVolume(*engine.volumes[1]);
}

TEST_F(VolumeList, ReadyIsSetInTheHoldThatTakesTheVolume) {
  scripts.Script(u"N:");

  AddReady(engine, Second(u"N:"));

  EXPECT_TRUE(engine.ready);
  EXPECT_EQ(engine.volumes.size(), 1u);
  EXPECT_EQ(seen.closes, 1);
  EXPECT_TRUE(seen.listWasFree);
  EXPECT_TRUE(seen.wasReady) << "before the loser was let go";
}

}  // namespace
}  // namespace quilmark
