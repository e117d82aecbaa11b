// NTFS volumes that can have no journal: they are walked.
#include <gmock/gmock.h>

#include "index/engine/volume_list.h"
#include "index/life/volume_life.h"
#include "index/life/volume_life_fixture.h"
#include "support/scripted_device.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// E:, which calls itself NTFS and can have no journal.
struct ReadOnlyNtfs : VolumeLife {
  ReadOnlyNtfs() {
    MapE();
    TellNtfs();
    QueueRefusal();
  }
  ~ReadOnlyNtfs() override { engine.readVolumeInfo = ReadVolumeInfo; }

  void TellNtfs() {
    engine.readVolumeInfo = [](char16_t) { return std::optional(VolumeInfo{.fileSystem = u"NTFS"}); };
  }
  void Refresh() {
    RefreshAllNonNtfsAsync(engine, window.Target());
    Finish();
  }

  void QueueRefusal() {
    DeviceScript& script = scripts.Script(u"E:");
    script.QueueError(kFsctlQueryUsnJournal, kErrorJournalNotActive);
    script.QueueError(kFsctlCreateUsnJournal, 19);  // ERROR_WRITE_PROTECT
    script.QueueError(kFsctlQueryUsnJournal, kErrorJournalNotActive);
  }
};

TEST_F(ReadOnlyNtfs, IsWalkedAtTheStart) {
  Start();

  ASSERT_THAT(Drives(), ElementsAre(u"E:"));
  EXPECT_EQ(Volume(0).fileSystem, kNtfsWithoutJournal);
  EXPECT_EQ(BuildPathLocked(Volume(0), 0), u"E:\\one.txt");
  EXPECT_TRUE(Volume(0).valid);
  EXPECT_EQ(scripts.Script(u"E:").OpenDevices(), 0);
  EXPECT_TRUE(HasNonNtfsVolume(engine));
}

TEST_F(ReadOnlyNtfs, IsWalkedBySyncAndRefresh) {
  Sync();
  ASSERT_THAT(Drives(), ElementsAre(u"E:"));
  folder.MakeFile("e/later.txt");
  QueueRefusal();

  RefreshAllNonNtfsAsync(engine, window.Target());
  Finish();

  ASSERT_THAT(Drives(), ElementsAre(u"E:")) << "no drive that is gone";
  EXPECT_EQ(Volume(0).records.size(), 2u);
  EXPECT_EQ(
      debugOutput,
      "[Quilmark][ManualRefresh]Refresh the index of non-NTFS drives.E:(NTFS (no journal)) E::OK(2) \n");
}

// As while another program has it for himself.
TEST_F(ReadOnlyNtfs, StaysInTheListWhileItLetsNobodyAsk) {
  Start();
  const VolumeInfoReader reader = [](char16_t) { return std::optional<VolumeInfo>(); };
  engine.readVolumeInfo = reader;
  Refresh();
  ASSERT_THAT(Drives(), ElementsAre(u"E:"));
  EXPECT_TRUE(HasNonNtfsVolume(engine)) << "without one the next refresh does nothing";

  TellNtfs();
  folder.MakeFile("e/later.txt");
  Refresh();
  EXPECT_EQ(Volume(0).records.size(), 2u);

  engine.readVolumeInfo = reader;
  UnmapDrive(u'E');
  Refresh();
  EXPECT_THAT(Drives(), IsEmpty()) << "its letter is gone";
}

TEST_F(ReadOnlyNtfs, ThatWasLockedInItsWalkComesBackWithASync) {
  Start();
  Volume(0).valid = false;
  engine.readVolumeInfo = [](char16_t) { return std::optional<VolumeInfo>(); };
  Sync();
  Refresh();
  ASSERT_THAT(Drives(), ElementsAre(u"E:"));
  EXPECT_FALSE(Volume(0).valid);

  TellNtfs();
  QueueRefusal();
  Sync();
  EXPECT_TRUE(Volume(0).valid);
  EXPECT_TRUE(HasFileSystem(Volume(0), kNtfsWithoutJournal));
}

TEST_F(ReadOnlyNtfs, StaysOutWhereItsDeviceDoesNotOpen) {
  for (int i = 0; i < 4; ++i) scripts.Script(u"E:").QueueOpenError(5);  // two opens a try
  Start();
  Sync();
  EXPECT_THAT(Drives(), IsEmpty());
}

}  // namespace
}  // namespace quilmark
