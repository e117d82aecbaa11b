#include "index/build/volume_build.h"

#include <gtest/gtest.h>

#include <memory>
#include <shared_mutex>
#include <stdexcept>

#include "support/scripted_device.h"

namespace quilmark {
namespace {

TEST(VolumeBuild, KeepsTheVolumeBusyAndItsTablesLocked) {
  VolumeIndex volume;
  volume.valid = false;
  {
    VolumeBuild build(volume, u"N:", u"FAT32");
    EXPECT_TRUE(volume.busy);
    EXPECT_TRUE(volume.valid);
    EXPECT_EQ(volume.drive, u"N:");
    EXPECT_TRUE(HasFileSystem(volume, u"FAT32"));
    EXPECT_FALSE(std::shared_lock(volume.indexLock, std::try_to_lock).owns_lock());
    build.Succeed();
  }
  EXPECT_FALSE(volume.busy);
  EXPECT_TRUE(volume.valid);
  EXPECT_TRUE(std::shared_lock(volume.indexLock, std::try_to_lock).owns_lock());
}

TEST(VolumeBuild, KeepsTheVolumeBusyUntilTheLastOneHasEnded) {
  VolumeIndex volume;
  auto first = std::make_unique<BusyMark>(volume);
  const BusyMark second(volume);
  first.reset();
  EXPECT_TRUE(volume.busy) << "whoever asks does not wait for the second build";
}

TEST(VolumeBuild, LeavesAVolumeNotValidWhereItHasNotSucceeded) {
  VolumeIndex volume;
  { const VolumeBuild build(volume, u"N:", u"FAT32"); }
  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.busy);
}

TEST(VolumeBuild, EndsWithAnExceptionAsWithAnyFailure) {
  VolumeIndex volume;
  const auto fail = [&] {
    const VolumeBuild build(volume, u"N:", u"FAT32");
    throw std::runtime_error("no memory");
  };
  EXPECT_THROW(fail(), std::runtime_error);
  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.busy);
  EXPECT_TRUE(std::shared_lock(volume.indexLock, std::try_to_lock).owns_lock());
}

TEST(VolumeBuild, MayBeGivenTheNameThatTheVolumeHas) {
  VolumeIndex volume;
  volume.drive = u"N:";
  VolumeBuild build(volume, volume.drive, u"FAT32");
  EXPECT_EQ(volume.drive, u"N:");
}

TEST(VolumeBuild, ClosesTheDeviceOfTheFormerBuild) {
  ScriptedVolumes scripts;
  scripts.Script(u"N:");
  VolumeIndex volume;
  volume.follower.TakeDevice(scripts.Open(u"N:"), u"N:");
  const VolumeBuild build(volume, u"N:", u"FAT32");
  EXPECT_FALSE(volume.follower.IsOpen());
}

}  // namespace
}  // namespace quilmark
