// Volumes when something ends in the middle of it: a drive, or the program.
#include <gmock/gmock.h>

#include <functional>
#include <mutex>

#include "index/volume_life_fixture.h"
#include "index/volume_list.h"
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
    InstallVolumeInfoReader(Answer);
  }
  ~EndInTheMiddle() override { InstallVolumeInfoReader(nullptr); }

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
  EXPECT_FALSE(engine.syncing);
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

}  // namespace
}  // namespace quilmark
