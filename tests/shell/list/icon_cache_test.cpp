#include "shell/list/icon_cache.h"

#include <gtest/gtest.h>

#include <thread>

#include "shell/allocation_count.h"
#include "shell/list/scripted_icons.h"

namespace quilmark {
namespace {

uint64_t nowMs = 0;

using Calls = std::vector<std::string>;

class IconCacheOf : public testing::Test {
 protected:
  IconCacheOf() {
    nowMs = 1'000'000;
    icons.Prepare();
    source.Take();
  }
  IconRef Plain(std::u16string_view path, int size = 16) {
    return icons.GetIcon({.path = path, .size = size});
  }
  IconRef Thumbnail(std::u16string_view path, int size = 48) {
    return icons.GetIcon({.path = path, .size = size, .thumbnail = true});
  }
  IconRef Folder(std::u16string_view path, int size = 16) {
    return icons.GetIcon({.path = path, .size = size, .typeOnly = true});
  }
  bool HasThumbnail(std::u16string_view path, int size = 48) {
    return icons.HasCachedIcon({.path = path, .size = size, .thumbnail = true});
  }

  ScriptedIcons source;
  IconCache icons{source, [] { return nowMs; }};
};

TEST_F(IconCacheOf, APathIsAskedForOnce) {
  const IconRef icon = Plain(u"C:\\a.txt");
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(Plain(u"C:\\a.txt"), icon);
  EXPECT_EQ(Plain(u"c:\\A.TXT", 0), icon);
  EXPECT_EQ(source.Take(), Calls{"file C:\\a.txt small"});
}

TEST_F(IconCacheOf, AnEmptyPathHasTheFoldersIconOrNone) {
  EXPECT_EQ(Folder(u""), icons.FolderIcon(16));
  EXPECT_EQ(Folder(u"", 48), icons.FolderIcon(16));
  EXPECT_EQ(Plain(u""), nullptr);
  EXPECT_EQ(Thumbnail(u""), nullptr);
  EXPECT_EQ(source.Take(), Calls{});
}

TEST_F(IconCacheOf, FoldersShareOneIconBelowTwentyOnePixels) {
  EXPECT_NE(icons.FolderIcon(16), nullptr);
  for (const int size : {-1, 0, 16, 20}) EXPECT_EQ(Folder(u"C:\\dir", size), icons.FolderIcon(16));
  EXPECT_EQ(source.Take(), Calls{});
  EXPECT_NE(Folder(u"C:\\dir", 21), icons.FolderIcon(16));
  EXPECT_EQ(source.Take(), Calls{"folder C:\\dir small"});
}

TEST_F(IconCacheOf, DriveRootsHaveTheirOwnIcon) {
  EXPECT_NE(Folder(u"C:\\"), icons.FolderIcon(16));
  EXPECT_NE(Folder(u"D:"), Folder(u"C:\\"));
  EXPECT_EQ(source.Take(), (Calls{"folder C:\\ small", "folder D:\\ small"}));
}

TEST_F(IconCacheOf, FolderIconHasBothSizesOfTheSystemAndAsksForNone) {
  EXPECT_EQ(icons.FolderIcon(16), icons.FolderIcon(27));
  EXPECT_NE(icons.FolderIcon(27), icons.FolderIcon(28));
  EXPECT_NE(icons.FolderIcon(48), nullptr);
  EXPECT_EQ(source.Take(), Calls{});
}

TEST_F(IconCacheOf, LargeIconsAreThoseFromTwentyEightPixelsOn) {
  Plain(u"a.txt", 27);
  Plain(u"a.txt", 28);
  EXPECT_EQ(source.Take(), (Calls{"file a.txt small", "file a.txt large"}));
}

TEST_F(IconCacheOf, TheFileItselfIsAskedForALargeIconThatItsTypeHasNot) {
  source.hasTypes = false;
  source.hasFiles = true;
  EXPECT_EQ(Plain(u"C:\\a.txt", 27), nullptr);
  EXPECT_NE(Plain(u"C:\\a.txt", 28), nullptr);
  EXPECT_EQ(source.Take(),
            (Calls{"file C:\\a.txt small", "file C:\\a.txt large", "itself C:\\a.txt large"}));
}

TEST_F(IconCacheOf, TheTypeOfALongPathIsToldByItsName) {
  const std::u16string folder = u"C:\\" + std::u16string(251, u'd') + u"\\";
  Plain(folder + u"abcd");
  Plain(folder + u"a.txt");
  EXPECT_EQ(source.Take(), (Calls{"file " + ToUtf8(folder) + "abcd small", "file a.txt small"}));
}

TEST_F(IconCacheOf, AThumbnailIsTriedFirst) {
  source.thumbnailSide = 96;
  const IconRef icon = Thumbnail(u"a.jpg");
  EXPECT_TRUE(HasThumbnail(u"a.jpg"));
  EXPECT_EQ(Thumbnail(u"a.jpg"), icon);
  EXPECT_EQ(source.Take(), Calls{"thumbnail a.jpg 48"});
  EXPECT_FALSE(icons.HasCachedIcon({.path = u"a.jpg", .size = 48}));
  Thumbnail(u"a.jpg", 8);
  EXPECT_EQ(source.Take(), Calls{"thumbnail a.jpg 16"}) << "no shell gives smaller ones";
}

TEST_F(IconCacheOf, WhatTheShellHasElseIsNoThumbnail) {
  source.anySide = 48;
  const IconRef icon = Thumbnail(u"a.jpg");
  EXPECT_NE(icon, nullptr);
  EXPECT_FALSE(HasThumbnail(u"a.jpg"));
  EXPECT_EQ(Plain(u"a.jpg", 48), icon);
  EXPECT_EQ(source.Take(), (Calls{"thumbnail a.jpg 48", "any a.jpg 48"}));
}

TEST_F(IconCacheOf, TheDecoderHasItsTurnWhereTheShellHasNothing) {
  source.decodes = true;
  EXPECT_NE(Thumbnail(u"a.jpg", 40), nullptr);
  EXPECT_TRUE(HasThumbnail(u"a.jpg", 40));
  EXPECT_EQ(source.Take(), (Calls{"thumbnail a.jpg 40", "any a.jpg 40", "decode a.jpg 40"}));
}

TEST_F(IconCacheOf, ABitmapOfAFewPixelsIsNoPicture) {
  source.decodes = true;
  source.thumbnailSide = source.anySide = 15;
  const IconRef decoded = Thumbnail(u"a.jpg");
  EXPECT_EQ(source.Count("decode"), 1u);
  EXPECT_EQ(source.alive, 3) << "the folders' two, and the decoded one";
  source.thumbnailSide = 16;
  EXPECT_NE(Thumbnail(u"b.jpg"), nullptr);
  EXPECT_TRUE(HasThumbnail(u"b.jpg")) << "a small picture of its own";
  EXPECT_EQ(source.Count("decode"), 1u);
}

TEST_F(IconCacheOf, ACorruptPictureIsTriedAgainAfterTenSeconds) {
  const IconRef icon = Thumbnail(u"a.jpg");
  EXPECT_NE(icon, nullptr) << "that of its type";
  EXPECT_FALSE(HasThumbnail(u"a.jpg"));
  EXPECT_EQ(source.Take(),
            (Calls{"thumbnail a.jpg 48", "any a.jpg 48", "decode a.jpg 48", "file a.jpg large"}));
  nowMs += 9'999;
  EXPECT_EQ(Thumbnail(u"a.jpg"), icon);
  EXPECT_TRUE(icons.ThumbnailOf(u"a.jpg", 48).isRefused);
  EXPECT_EQ(source.Take(), Calls{});
  nowMs += 1;
  EXPECT_TRUE(icons.ThumbnailOf(u"a.jpg", 48).isRefused) << "a paint alone does not ask for it again";
  source.decodes = true;
  EXPECT_NE(Thumbnail(u"a.jpg"), icon);
  EXPECT_TRUE(HasThumbnail(u"a.jpg"));
  EXPECT_EQ(source.Count("decode"), 1u);
}

TEST_F(IconCacheOf, ARefusedPictureWithoutAnIconIsAskedForThatAlone) {
  source.hasTypes = false;
  EXPECT_EQ(Thumbnail(u"a.jpg"), nullptr);
  EXPECT_TRUE(icons.ThumbnailOf(u"a.jpg", 48).isRefused);
  source.Take();
  nowMs += 6'000;
  EXPECT_EQ(Thumbnail(u"a.jpg"), nullptr);
  EXPECT_EQ(source.Take(), (Calls{"file a.jpg large", "itself a.jpg large"}));
  nowMs += 4'000;
  Thumbnail(u"a.jpg");
  EXPECT_EQ(source.Count("thumbnail"), 1u) << "ten seconds from the first time, not from the second";
}

TEST_F(IconCacheOf, AFolderIsNeverAskedForAThumbnail) {
  source.thumbnailSide = 48;
  source.hasTypes = false;
  EXPECT_EQ(icons.GetIcon({.path = u"C:\\dir", .size = 48, .typeOnly = true, .thumbnail = true}),
            nullptr);
  EXPECT_EQ(source.Count("thumbnail") + source.Count("any"), 0u);
}

TEST_F(IconCacheOf, WhatIsKnownOfManyRefusedPicturesGoesWithTheirTime) {
  for (int i = 0; i < 5'000; ++i) {
    nowMs += 100;
    Thumbnail(u"a" + std::u16string(static_cast<size_t>(i % 50), u'x') + static_cast<char16_t>(i) +
              u".jpg");
  }
  source.Take();
  EXPECT_NE(Thumbnail(u"a" + std::u16string(49, u'x') + static_cast<char16_t>(4'999) + u".jpg"),
            nullptr);
  EXPECT_EQ(source.Take(), Calls{});
}

TEST_F(IconCacheOf, ProbesLoadNothing) {
  EXPECT_FALSE(icons.HasCachedIcon({.path = u"a.jpg"}));
  EXPECT_EQ(icons.ThumbnailOf(u"a.jpg", 48).icon, nullptr);
  EXPECT_FALSE(icons.ThumbnailOf(u"a.jpg", 48).isRefused);
  EXPECT_EQ(source.Take(), Calls{});
  EXPECT_EQ(source.prepared, 1) << "this thread, by Prepare";
}

std::u16string PathOf(int file) {
  return u"C:\\" + std::u16string(1, static_cast<char16_t>(0x4E00 + file)) + u".txt";
}

TEST_F(IconCacheOf, TheIconBeyondTheMostTakesThePlaceOfTheOneDrawnLongestAgo) {
  const int folders = source.alive;
  for (int file = 0; file < 2'048; ++file) Plain(PathOf(file));
  EXPECT_EQ(source.alive, folders + 2'048);
  EXPECT_TRUE(icons.HasCachedIcon({.path = PathOf(0)}));  // which is the newest with that
  Plain(PathOf(2'048));
  EXPECT_EQ(source.alive, folders + 2'048) << "its handle is gone";
  EXPECT_TRUE(icons.HasCachedIcon({.path = PathOf(0)}));
  EXPECT_FALSE(icons.HasCachedIcon({.path = PathOf(1)}));
  EXPECT_TRUE(icons.HasCachedIcon({.path = PathOf(2)}));
}

TEST_F(IconCacheOf, AnIconThatIsDrawnOutlivesItsPlace) {
  const int folders = source.alive;
  IconRef drawn = Plain(PathOf(0));
  for (int file = 1; file <= 2'048; ++file) Plain(PathOf(file));
  EXPECT_EQ(source.alive, folders + 2'049);
  drawn.reset();
  EXPECT_EQ(source.alive, folders + 2'048);
}

TEST_F(IconCacheOf, HalfOfThemGoWhereTheSystemRunsShort) {
  const int folders = source.alive;
  for (int file = 0; file < 2'000; ++file) Plain(PathOf(file));
  for (const uint32_t count : {0u, 7'199u, 65'536u, 0xFFFF'FFFFu}) {
    source.gdiObjects = count;
    icons.TrimGdiIfNeeded();
    EXPECT_EQ(source.alive, folders + 2'000) << count;
  }
  source.gdiObjects = 7'200;
  icons.TrimGdiIfNeeded();
  EXPECT_EQ(source.alive, folders + 1'024);
  EXPECT_FALSE(icons.HasCachedIcon({.path = PathOf(975)}));
  EXPECT_TRUE(icons.HasCachedIcon({.path = PathOf(976)}));
  source.gdiObjects = 65'535;
  icons.TrimGdiIfNeeded();
  EXPECT_EQ(source.alive, folders + 1'024);
}

TEST_F(IconCacheOf, ClearLetsGoOfAllAndForgets) {
  Plain(u"a.txt");
  Thumbnail(u"a.jpg");
  icons.Clear();
  EXPECT_EQ(source.alive, 0);
  EXPECT_EQ(icons.FolderIcon(16), nullptr);
  EXPECT_FALSE(icons.ThumbnailOf(u"a.jpg", 48).isRefused);
  EXPECT_FALSE(icons.HasCachedIcon({.path = u"a.txt"}));
  icons.Prepare();
  EXPECT_NE(icons.FolderIcon(16), nullptr);
}

TEST_F(IconCacheOf, TheLockIsFreeWhileTheSourceIsAsked) {
  size_t asked = 0;
  source.whileAsked = [&] {
    std::thread([&] { asked += icons.HasCachedIcon({.path = u"b.txt"}) ? 1u : 0u; }).join();
  };
  source.whileAsked();
  Thumbnail(u"a.jpg");
  EXPECT_EQ(asked, 0u);
}

// What another thread has loaded meanwhile counts.
TEST_F(IconCacheOf, TheFirstToComeKeepsItsIcon) {
  const int folders = source.alive;
  IconRef others;
  source.whileAsked = [&] {
    source.whileAsked = {};
    others = Plain(u"a.txt");
  };
  EXPECT_EQ(Plain(u"a.txt"), others);
  EXPECT_NE(others, nullptr);
  EXPECT_EQ(source.Count("file a.txt"), 2u);
  EXPECT_EQ(source.alive, folders + 1);
}

TEST_F(IconCacheOf, AHitAllocatesNothing) {
  Plain(u"C:\\a.txt");
  const AllocationCount count;
  for (int i = 0; i < 100; ++i) Plain(u"C:\\a.txt");
  EXPECT_EQ(count.Value(), 0u);
}

}  // namespace
}  // namespace quilmark
