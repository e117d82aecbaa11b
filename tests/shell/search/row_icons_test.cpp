#include "shell/search/row_icons.h"

#include <gtest/gtest.h>

#include "shell/allocation_count.h"
#include "shell/list/scripted_icons.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

class RowIconOf : public testing::Test {
 protected:
  RowIconOf() {
    icons.Prepare();
    source.Take();
  }
  RowIcon Of(const RowText& row, ViewMode view = ViewMode::kList, bool isMoving = false) {
    return IconOfRow(icons, row, {.view = view, .size = IconSizeOf(view), .isMoving = isMoving}, path);
  }

  ScriptedIcons source;
  IconCache icons{source};
  std::u16string path;
  const RowText text = {.name = u"a.txt", .folder = u"Q:\\docs"};
  const RowText picture = {.name = u"a.JPG", .folder = u"Q:\\"};
};

TEST_F(RowIconOf, IsSixteenTwentyFourOrFortyEightPixelsLarge) {
  EXPECT_EQ(IconSizeOf(ViewMode::kList), 16);
  EXPECT_EQ(IconSizeOf(ViewMode::kSmallIcons), 24);
  EXPECT_EQ(IconSizeOf(ViewMode::kLargeIcons), 48);
}

TEST_F(RowIconOf, AFileIsThatOfItsPath) {
  const IconRef icon = Of(text).icon;
  EXPECT_NE(icon, nullptr);
  EXPECT_EQ(Of(text).icon, icon);
  EXPECT_EQ(source.Take(), Calls{"file Q:\\docs\\a.txt small"});
  EXPECT_FALSE(Of(text, ViewMode::kLargeIcons).isPictureMissing);
}

TEST_F(RowIconOf, AFolderIsTheSharedOneInEverySizeAndAsksNobody) {
  const RowText folder = {.name = u"pictures.jpg", .folder = u"Q:\\docs", .isDirectory = true};
  for (const ViewMode view : {ViewMode::kList, ViewMode::kSmallIcons, ViewMode::kLargeIcons}) {
    const RowIcon icon = Of(folder, view);
    EXPECT_EQ(icon.icon, icons.FolderIcon(IconSizeOf(view)));
    EXPECT_NE(icon.icon, nullptr);
    EXPECT_FALSE(icon.isPictureMissing);
  }
  EXPECT_EQ(source.Take(), Calls{});
}

TEST_F(RowIconOf, ADriveIsItsOwn) {
  const IconRef icon = Of({.name = u"Q:", .isDirectory = true}).icon;
  EXPECT_NE(icon, nullptr);
  EXPECT_NE(icon, icons.FolderIcon(16));
  EXPECT_EQ(source.Take(), Calls{"folder Q:\\ small"});
}

// As the list shows the record of the root.
TEST_F(RowIconOf, ADriveIsItsOwnByItsRecordToo) {
  const auto volume = MakeTestVolume(u"Q:");
  const uint32_t root = AddFolder(*volume, u".");
  const IconRef icon = Of(TextOfRow({volume.get(), root})).icon;
  EXPECT_NE(icon, nullptr);
  EXPECT_EQ(source.Take(), Calls{"folder Q:\\ small"});
}

TEST_F(RowIconOf, WhileTheListMovesNothingIsLoaded) {
  EXPECT_EQ(Of(text, ViewMode::kList, true).icon, nullptr);
  EXPECT_EQ(source.Take(), Calls{});
  const IconRef icon = Of(text).icon;
  EXPECT_EQ(Of(text, ViewMode::kList, true).icon, icon);
}

TEST_F(RowIconOf, APictureAmongLargeIconsIsItsThumbnailOnceThereIsOne) {
  source.decodes = true;
  const RowIcon before = Of(picture, ViewMode::kLargeIcons);
  EXPECT_NE(before.icon, nullptr) << "that of its type";
  EXPECT_TRUE(before.isPictureMissing);
  EXPECT_EQ(source.Take(), Calls{"file Q:\\a.JPG large"}) << "thumbnails are for a job";
  const IconRef thumbnail = icons.GetIcon({.path = u"Q:\\a.JPG", .size = 48, .thumbnail = true});
  const RowIcon after = Of(picture, ViewMode::kLargeIcons);
  EXPECT_EQ(after.icon, thumbnail);
  EXPECT_FALSE(after.isPictureMissing);
  EXPECT_EQ(Of(picture, ViewMode::kLargeIcons, true).icon, thumbnail);
}

TEST_F(RowIconOf, APictureIsNotMissedInOtherViewsAndWhereItCannotBeHad) {
  EXPECT_FALSE(Of(picture, ViewMode::kList).isPictureMissing);
  EXPECT_FALSE(Of(picture, ViewMode::kSmallIcons).isPictureMissing);
  RowText deleted = picture;
  deleted.isDeleted = true;
  EXPECT_FALSE(Of(deleted, ViewMode::kLargeIcons).isPictureMissing);
  icons.GetIcon({.path = u"Q:\\a.JPG", .size = 48, .thumbnail = true});
  EXPECT_FALSE(Of(picture, ViewMode::kLargeIcons).isPictureMissing) << "corrupt";
}

TEST_F(RowIconOf, AllocatesNothingOnceItIsKept) {
  Of(text);
  const AllocationCount count;
  for (int i = 0; i < 10; ++i) Of(text);
  EXPECT_EQ(count.Value(), 0u);
}

TEST(ImageExtension, IsOneOfTenInEitherCase) {
  for (const std::u16string_view name : {u"a.jpg", u"a.JPEG", u"a.b.png", u".gif", u"a.Bmp", u"a.webp",
                                         u"a.ico", u"a.svg", u"a.tif", u"a.psd"}) {
    EXPECT_TRUE(HasImageExtension(name));
  }
  for (const std::u16string_view name :
       {u"jpg", u"a.jp", u"a.jpgx", u"a.jpg.txt", u"a.jpg ", u"", u"."}) {
    EXPECT_FALSE(HasImageExtension(name));
  }
}

}  // namespace
}  // namespace quilmark
