// Volumes when something ends in the middle of it: a drive, or the program.
#include <gmock/gmock.h>

#include <functional>
#include <mutex>

#include "index/engine/volume_list.h"
#include "index/life/volume_life_fixture.h"
#include "platform/utf.h"

namespace quilmark {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

// What is asked of drives passes through here; a start asks of all at once.
struct AskedDrives {
  std::u16string letters;
  std::function<void()> meanwhile;  // at each question, behind `letters`
};
AskedDrives asked;
std::mutex askedLock;

std::optional<VolumeInfo> Answer(char16_t letter) {
  const std::scoped_lock lock(askedLock);
  asked.letters.push_back(letter);
  if (asked.meanwhile) asked.meanwhile();
  return ReadVolumeInfo(letter);
}

struct EndInTheMiddle : VolumeLife {
  EndInTheMiddle() {
    asked = {};
    engine.readVolumeInfo = Answer;
  }
  ~EndInTheMiddle() override { engine.readVolumeInfo = ReadVolumeInfo; }

  void Refresh() {
    RefreshAllNonNtfsAsync(engine, window.Target());
    Finish();
  }
};

TEST_F(EndInTheMiddle, AShutdownInMidSyncLeavesTheOtherDrives) {
  MapE();
  MapF();
  MapDrive(u'G', folder.PathOf(u"f"));
  asked.meanwhile = [] { ShutdownRequested = asked.letters.ends_with(u'F'); };

  Sync();

  EXPECT_EQ(asked.letters, u"BEF");
  EXPECT_THAT(Drives(), ElementsAre(u"E:"));
  EXPECT_THAT(Posted(), IsEmpty());
  EXPECT_FALSE(engine.syncing.IsRunning());
}

TEST_F(EndInTheMiddle, AShutdownInMidRefreshWalksNoOtherDriveAndPostsNothing) {
  MapE();
  MapF();
  Start();
  Posted();
  folder.MakeFile("e/later.txt");
  asked.letters.clear();
  // The sync that opens a refresh asks first.
  asked.meanwhile = [] { ShutdownRequested = asked.letters == u"BEFBEF"; };

  Refresh();

  EXPECT_EQ(asked.letters, u"BEFBEF");
  EXPECT_EQ(Volume(0).records.size(), 1u);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1033u, 0u, 0))) << "the end of the sync";
  EXPECT_THAT(debugOutput, testing::Not(HasSubstr("OK")));
  EXPECT_THAT(Drives(), ElementsAre(u"E:", u"F:"));
}

TEST_F(EndInTheMiddle, AShutdownInMidEnumerationOfTheStartFollowsAndTellsNothing) {
  MapN();
  DeviceScript& script = scripts.Script(u"N:");
  script.Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 4096)});
  script.Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
  script.Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, 5, u"a.txt"),
                                   .meanwhile = [] { ShutdownRequested = true; }});

  Start();

  EXPECT_EQ(script.AskedCount(kFsctlReadUsnJournal), 0u);
  EXPECT_THAT(Posted(), IsEmpty());
}

TEST_F(EndInTheMiddle, ADriveThatGoesDuringARefreshIsSkippedInTheLog) {
  MapE();
  MapF();
  Start();
  Posted();
  asked.letters.clear();
  asked.meanwhile = [] {
    if (asked.letters == u"BEFBEF") UnmapDrive(u'E');
  };

  Refresh();

  const std::string fileSystem = ToUtf8(Volume(0).fileSystem);
  EXPECT_EQ(debugOutput, "[Quilmark][ManualRefresh]Refresh the index of non-NTFS drives.E:(" +
                             fileSystem + ") F:(" + fileSystem + ") E::SKIP F::OK(1) \n");
  EXPECT_THAT(Posted(), testing::Contains(std::tuple(1031u, 1u, 0))) << "neither rebuilt nor failed";
}

TEST_F(EndInTheMiddle, AStartWhoseDrivesAnotherJobBuiltTellsThatTheyAreReady) {
  auto volume = std::make_unique<VolumeIndex>();
  volume->drive = u"E:";
  AddUnlessPresent(engine, std::move(volume));  // as a sync does before its end
  ASSERT_FALSE(engine.ready);

  Start();

  EXPECT_TRUE(engine.ready);
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1025u, 0u, 0)));
}

TEST_F(EndInTheMiddle, ADriveThatArrivesDuringASyncIsTakenByIt) {
  MapE();
  MapF();
  asked.meanwhile = [&] {
    if (asked.letters != u"BEF") return;
    MapDrive(u'C', folder.PathOf(u"f"));  // its turn has passed
    SyncCurrentVolumesAsync(engine, window.Target());
  };

  Sync();

  EXPECT_THAT(Drives(), ElementsAre(u"C:", u"E:", u"F:"));
  EXPECT_EQ(asked.letters, u"BEFBCEF");
  EXPECT_FALSE(engine.syncing.IsRunning());
  EXPECT_THAT(Posted(), ElementsAre(std::tuple(1025u, 0u, 0), std::tuple(1033u, 0u, 0)));
}

// An NTFS stick at N: whose monitor has found that the device is gone.
struct LostStick : VolumeLife {
  LostStick() {
    MapE();
    MapN();
    QueueNtfsBuild();
    scripts.Script(u"N:").QueueError(kFsctlReadUsnJournal, kErrorDeviceNotConnected);
    Start();
    EXPECT_TRUE(WaitFor([&] { return !Volume(1).valid; }));
    Posted();
  }
};

TEST_F(LostStick, IsClosedAndToldOfOnceWhenItsLetterGoes) {
  EXPECT_FALSE(RemoveUnavailableVolumes(engine)) << "its letter is there";
  EXPECT_EQ(scripts.Script(u"N:").OpenDevices(), 1);

  UnmapDrive(u'N');
  EXPECT_TRUE(RemoveUnavailableVolumes(engine));
  EXPECT_FALSE(RemoveUnavailableVolumes(engine));
  Finish();

  EXPECT_EQ(scripts.Script(u"N:").OpenDevices(), 0);
}

TEST_F(LostStick, IsReleasedOnceForAnEject) {
  EXPECT_TRUE(ReleaseVolumesByMask(engine, 1u << 13));
  EXPECT_EQ(scripts.Script(u"N:").OpenDevices(), 0);
  EXPECT_FALSE(ReleaseVolumesByMask(engine, 1u << 13));
}

TEST_F(VolumeLife, AStickThatIsReleasedForAnEjectIsToldOfWhenItsLetterGoes) {
  MapN();
  QueueNtfsBuild();
  Start();
  EXPECT_TRUE(ReleaseVolumesByMask(engine, 1u << 13));
  EXPECT_FALSE(RemoveUnavailableVolumes(engine)) << "its letter is there";

  UnmapDrive(u'N');
  EXPECT_TRUE(RemoveUnavailableVolumes(engine)) << "its rows may be on the screen";
  EXPECT_FALSE(RemoveUnavailableVolumes(engine));
}

TEST_F(VolumeLife, AStickThatIsReleasedBehindItsLetterIsToldOfOnce) {
  MapN();
  QueueNtfsBuild();
  Start();
  UnmapDrive(u'N');
  EXPECT_TRUE(ReleaseVolumesByMask(engine, 1u << 13));
  EXPECT_FALSE(RemoveUnavailableVolumes(engine));
}

TEST_F(LostStick, IsToldOfAgainWhenItGoesASecondTime) {
  UnmapDrive(u'N');
  EXPECT_TRUE(RemoveUnavailableVolumes(engine));
  Finish();
  MapN();
  QueueNtfsBuild();
  scripts.Script(u"N:").QueueError(kFsctlReadUsnJournal, kErrorDeviceNotConnected);
  Sync();
  ASSERT_TRUE(WaitFor([&] { return !Volume(1).valid; }));

  UnmapDrive(u'N');
  EXPECT_TRUE(RemoveUnavailableVolumes(engine));
  Finish();

  EXPECT_EQ(scripts.Script(u"N:").OpenDevices(), 0);
}

TEST_F(LostStick, AWalkedDriveThatIsFoundGoneByTheMenuIsStillTold) {
  UnmapDrive(u'E');
  EXPECT_FALSE(HasNonNtfsVolume(engine));
  EXPECT_FALSE(Volume(0).valid);
  EXPECT_TRUE(RemoveUnavailableVolumes(engine));
}

}  // namespace
}  // namespace quilmark
