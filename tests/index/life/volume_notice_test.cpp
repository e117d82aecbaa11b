// Volumes that others want for themselves: an eject, a check of the disk, a format.
#include "index/engine/volume_list.h"
#include "index/life/volume_life_fixture.h"

namespace quilmark {
namespace {

struct NoticedVolume : VolumeLife {
  NoticedVolume() {
    MapN();
    QueueNtfsBuild();
    Start();
    Posted();
  }
  DeviceScript& Disk() { return scripts.Script(u"N:"); }
  uintptr_t Notice() {
    const auto notices = Disk().Notices();
    EXPECT_EQ(notices.size(), 1u);
    return notices.empty() ? 0 : notices.back();
  }
  void Reopen(uintptr_t id) {
    ReopenNoticedVolume(engine, window.Target(), id);
    Finish();
  }
};

TEST_F(NoticedVolume, IsGivenBackBeforeTheAnswer) {
  EXPECT_TRUE(ReleaseNoticedVolume(engine, Notice()));
  EXPECT_EQ(Disk().OpenDevices(), 0);
  EXPECT_FALSE(Volume(0).valid);
  EXPECT_FALSE(ReleaseNoticedVolume(engine, Notice())) << "given back already";
}

TEST_F(NoticedVolume, IsBuiltAgainWhenItIsFree) {
  const uintptr_t former = Notice();
  ReleaseNoticedVolume(engine, former);
  QueueNtfsBuild();
  Reopen(former);
  EXPECT_TRUE(Volume(0).valid);
  EXPECT_EQ(Disk().OpenDevices(), 1);
  EXPECT_NE(Notice(), former) << "of the device that is open now";
}

TEST_F(NoticedVolume, IsBuiltAgainAtTheNextNoticeWhereItCouldNotBeOpened) {
  const uintptr_t notice = Notice();
  ReleaseNoticedVolume(engine, notice);
  Disk().QueueOpenError(kErrorAccessDenied);
  Disk().QueueOpenError(kErrorAccessDenied);
  Reopen(notice);  // dismounted, and locked still
  EXPECT_FALSE(Volume(0).valid);
  QueueNtfsBuild();
  Reopen(notice);
  EXPECT_TRUE(Volume(0).valid);
}

TEST_F(NoticedVolume, IsNotWalkedWhileItLetsNobodyAsk) {
  const uint64_t builds = Volume(0).builds;
  ReleaseNoticedVolume(engine, Notice());
  engine.readVolumeInfo = [](char16_t) { return std::optional<VolumeInfo>(); };
  Sync();
  engine.readVolumeInfo = ReadVolumeInfo;
  EXPECT_EQ(Volume(0).builds, builds);
  EXPECT_TRUE(IsNtfs(Volume(0)));
}

TEST_F(NoticedVolume, IsLeftAloneWhereNobodyReleasedIt) {
  const uint64_t builds = Volume(0).builds;
  Reopen(Notice());
  EXPECT_EQ(Volume(0).builds, builds);
  EXPECT_TRUE(Posted().empty());
}

TEST_F(NoticedVolume, IsFoundByItsNoticeAlone) {
  EXPECT_FALSE(ReleaseNoticedVolume(engine, Notice() + 1'000));
  EXPECT_FALSE(ReleaseNoticedVolume(engine, 0));
  EXPECT_TRUE(Volume(0).valid);
}

// What is in the tables then is not the volume.
TEST_F(NoticedVolume, IsNotSearchedWhereItWasWantedDuringItsBuild) {
  ReleaseNoticedVolume(engine, Notice());
  Disk().Queue(kFsctlQueryUsnJournal, {.output = JournalData(77, 4096)});
  Disk().Queue(kFsctlEnumUsnData, {.output = Bytes(8)});
  const auto eject = [this] { ReleaseVolumesByMask(engine, 1u << 13); };
  Disk().Queue(kFsctlEnumUsnData, {.output = UsnBlockBuilder(1).Record(41, 5, u"a.txt"),
                                   .meanwhile = [&] { std::thread(eject).join(); }});
  Sync();
  EXPECT_FALSE(Volume(0).valid);
  EXPECT_EQ(Disk().OpenDevices(), 0);
}

TEST_F(NoticedVolume, IsToldOfAgainWhenItsLetterIsGone) {
  EXPECT_TRUE(ReleaseNoticedVolume(engine, Notice()));
  UnmapDrive(u'N');
  EXPECT_TRUE(ReleaseVolumesByMask(engine, 1u << 13)) << "its rows are on the screen";
  EXPECT_FALSE(ReleaseVolumesByMask(engine, 1u << 13));
  EXPECT_FALSE(RemoveUnavailableVolumes(engine));
  EXPECT_TRUE(Disk().Notices().empty()) << "another volume may have the letter next";
}

}  // namespace
}  // namespace quilmark
