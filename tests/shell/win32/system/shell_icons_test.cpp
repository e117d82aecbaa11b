#include "shell/win32/system/shell_icons.h"

#include <gtest/gtest.h>

#include "platform/background.h"
#include "shell/list/icon_cache.h"
#include "shell/win32/system/com_thread.h"
#include "support/object_counts.h"
#include "support/picture_file.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

class ShellIconsOf : public testing::Test {
 protected:
  ShellIconsOf() { source.PrepareThread(); }
  std::u16string Picture() {
    folder.MakeFile("a.bmp", BitmapFile(100, 50, 0x00FF00));
    return folder.Path() + u"\\a.bmp";
  }

  IconSource& source = TheShellIcons();
  ScratchFolder folder;
};

TEST_F(ShellIconsOf, ATypeNeedNoFile) {
  for (const IconScale scale : {IconScale::kSmall, IconScale::kLarge}) {
    EXPECT_NE(source.IconOfType(u"Q:\\no such folder\\a.txt", IconType::kFile, scale), nullptr);
    EXPECT_NE(source.IconOfType(u"a.txt", IconType::kFile, scale), nullptr);
    EXPECT_NE(source.IconOfType(u"folder", IconType::kFolder, scale), nullptr);
  }
}

TEST_F(ShellIconsOf, AFileThatIsMissingHasNone) {
  const std::u16string missing = folder.Path() + u"\\missing.png";
  EXPECT_EQ(source.IconOfFile(missing, IconScale::kLarge), nullptr);
  for (const ShellPicture kind : {ShellPicture::kThumbnail, ShellPicture::kAny}) {
    EXPECT_EQ(source.PictureOf(missing, 48, kind).icon, nullptr);
  }
  EXPECT_EQ(source.DecodedPicture(missing, 48), nullptr);
}

TEST_F(ShellIconsOf, APictureBecomesAThumbnailOnAJob) {
  const std::u16string path = Picture();
  IconCache icons(source);
  IconRef icon;
  ASSERT_TRUE(RunBackground(
      "thumb_hydration", [&] { icon = icons.GetIcon({.path = path, .size = 48, .thumbnail = true}); }));
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
  EXPECT_NE(icon, nullptr);
  EXPECT_EQ(icons.ThumbnailOf(path, 48).icon, icon);
}

TEST_F(ShellIconsOf, OfManyPicturesStayAsManyAsThereIsRoomFor) {
  const std::u16string path = Picture();
  const int64_t before = CountGdiObjects();
  {
    IconCache icons(source);
    for (int size = 16; size < 16 + 300; ++size) {
      EXPECT_NE(icons.GetIcon({.path = path, .size = size % 40 + 16, .thumbnail = true}), nullptr);
    }
    EXPECT_GT(CountGdiObjects(), before);
    icons.Clear();
    EXPECT_EQ(CountGdiObjects(), before);
  }
}

// Of the interface thread; another kind of apartment serves as well.
TEST_F(ShellIconsOf, AreHadInAnApartmentOfTheThreadsOwn) {
  ASSERT_TRUE(RunBackground("own_apartment", [&] {
    const InterfaceApartment apartment;
    source.PrepareThread();
    EXPECT_NE(source.IconOfType(u"a.txt", IconType::kFile, IconScale::kSmall), nullptr);
  }));
  ASSERT_TRUE(WaitForBackgroundJobs(60'000));
}

}  // namespace
}  // namespace quilmark
