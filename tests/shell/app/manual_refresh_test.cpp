#include "shell/app/manual_refresh.h"

#include <gtest/gtest.h>

#include "index/life/volume_life.h"
#include "shell/window_harness.h"
#include "support/mapped_drive.h"

namespace quilmark {
namespace {

class ManualRefresh : public testing::Test {
 protected:
  ScratchFolder folder;
  MappedDrive drive{u'Q', folder.Path()};
  WindowHarness harness;
};

TEST_F(ManualRefresh, WalksAgainWhatNoJournalFollows) {
  VolumeIndex& volume = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  volume.fileSystem = u"ext4";
  RefreshNonNtfs(harness.app, harness.Context());
  EXPECT_EQ(harness.window.status, u"Refreshing all non-NTFS volume indexes...");
  const auto isOfTheRefresh = [this] { return harness.search.Next().message == WM_NON_NTFS_REFRESHED; };
  while (!isOfTheRefresh()) ASSERT_FALSE(HasFailure());
}

TEST_F(ManualRefresh, DoesNothingWithoutSuchAVolume) {
  AddVolume(Engine(), MakeTestVolume(u"Q:"))->fileSystem = u"NTFS";
  RefreshNonNtfs(harness.app, harness.Context());
  EXPECT_EQ(harness.window.status, u"before");
  EXPECT_TRUE(harness.search.IsQuiet());
}

TEST_F(ManualRefresh, AVolumeWhoseDriveIsGoneIsNoReason) {
  VolumeIndex& gone = *AddVolume(Engine(), MakeTestVolume(u"X:"));
  gone.fileSystem = u"FAT32";
  RefreshNonNtfs(harness.app, harness.Context());
  EXPECT_FALSE(gone.valid);
  EXPECT_TRUE(harness.search.IsQuiet());
}

}  // namespace
}  // namespace quilmark
