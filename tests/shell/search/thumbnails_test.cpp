#include "shell/search/thumbnails.h"

#include <gtest/gtest.h>

#include <functional>
#include <mutex>

#include "platform/background.h"
#include "shell/list/scripted_icons.h"
#include "support/gate.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

// Q: with two pictures, a text and a folder that is called as a picture is.
class Thumbnails : public testing::Test {
 protected:
  Thumbnails() {
    source.thumbnailSide = 48;
    const uint32_t one = AddFile(volume, u"a.jpg"), text = AddFile(volume, u"a.txt"),
                   folder = AddFolder(volume, u"f.png"), other = AddFile(volume, u"b.PNG");
    for (const uint32_t index : {one, text, folder, other, 1'000'000u}) {
      rows->push_back({&volume, index});
    }
  }
  ~Thumbnails() override {
    ShutdownRequested = false;
    WaitForBackgroundJobs(60'000);
  }
  void Load(RowRange range) {
    LoadThumbnailsAsync(icons, rows, range, 48);
    ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  }
  void ExpectChanged() {
    const PostedMessage message = search.Next();
    EXPECT_EQ(message.message, WM_ATTRS_UPDATED);
    EXPECT_EQ(message.first, TheSearch().hydrationGeneration.Number());
    EXPECT_EQ(message.second, 0);
  }

  SearchHarness search;
  ScriptedIcons source;
  IconCache icons{source};
  VolumeIndex& volume = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  std::shared_ptr<ResultSet> rows = std::make_shared<ResultSet>();
};

TEST_F(Thumbnails, ComeForThePicturesInView) {
  Load({0, 100});
  EXPECT_EQ(source.Take(), (Calls{"thumbnail Q:\\a.jpg 48", "thumbnail Q:\\b.PNG 48"}));
  EXPECT_TRUE(icons.HasCachedIcon({.path = u"Q:\\a.jpg", .size = 48, .thumbnail = true}));
  ExpectChanged();
  Load({0, 100});
  EXPECT_EQ(source.Take(), Calls{});
  EXPECT_TRUE(search.IsQuiet()) << "nothing is new";
}

TEST_F(Thumbnails, ComeForTheRangeAlone) {
  Load({1, 3});
  Load({5, 5});
  Load({7, 9});
  EXPECT_EQ(source.Take(), Calls{});
  EXPECT_TRUE(search.IsQuiet());
}

TEST_F(Thumbnails, DoNotComeForWhatIsDeleted) {
  MarkDeleted(volume, (*rows)[0].index);
  Load({0, 100});
  EXPECT_EQ(source.Take(), Calls{"thumbnail Q:\\b.PNG 48"});
}

// A build holds the lock for as long as it takes.
TEST_F(Thumbnails, DoNotWaitForAVolumeThatIsBuilt) {
  volume.busy = true;
  const std::scoped_lock build(volume.indexLock);
  Load({0, 100});
  volume.busy = false;
  EXPECT_EQ(source.Take(), Calls{});
}

TEST_F(Thumbnails, OfCorruptPicturesTellNobodyAndAreNotTriedAtOnce) {
  source.thumbnailSide = 0;
  Load({0, 1});
  EXPECT_EQ(source.Count("decode"), 1u);
  Load({0, 1});
  EXPECT_EQ(source.Count("decode"), 1u);
  EXPECT_TRUE(search.IsQuiet());
}

TEST_F(Thumbnails, AreDroppedWhereTheJobIsOutOfDate) {
  const std::function<void()> ends[] = {[] { SupersedeSearch(); },
                                        [] { TheSearch().thumbGeneration.Supersede(); },
                                        [] { ShutdownRequested = true; }};
  for (const auto& end : ends) {
    icons.Clear();
    source.Take();
    source.whileAsked = end;
    Load({0, 100});
    EXPECT_EQ(source.Take(), Calls{"thumbnail Q:\\a.jpg 48"}) << "was under way";
    EXPECT_TRUE(search.IsQuiet());
    ShutdownRequested = false;
  }
}

TEST_F(Thumbnails, OfAnEndingProgramAreNotLoaded) {
  ShutdownRequested = true;
  Load({0, 100});
  EXPECT_EQ(source.Take(), Calls{});
}

TEST_F(Thumbnails, ThatAreRefusedAreAskedForAnew) {
  Door door;
  source.whileAsked = [&] { door.Pass(); };
  LoadThumbnailsAsync(icons, rows, {0, 1}, 48);
  ASSERT_TRUE(WaitUntil([&] { return source.Count("thumbnail") == 1; }));
  const uint64_t number = TheSearch().thumbGeneration.Number();
  LoadThumbnailsAsync(icons, rows, {3, 4}, 48);
  EXPECT_EQ(TheSearch().thumbGeneration.Number(), number);
  EXPECT_TRUE(TheSearch().thumbHydration.IsRunning());
  door.Open();
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_EQ(source.Take(), Calls{"thumbnail Q:\\a.jpg 48"});
  ExpectChanged();  // of what has come, and for whoever was refused
  ExpectChanged();
  EXPECT_TRUE(search.IsQuiet());
}

// The generation of the moment: the message is not stale where attributes were asked for meanwhile.
TEST_F(Thumbnails, CarryTheGenerationOfTheAttributes) {
  source.whileAsked = [] { TheSearch().hydrationGeneration.Supersede(); };
  Load({0, 1});
  ExpectChanged();
}

}  // namespace
}  // namespace quilmark
