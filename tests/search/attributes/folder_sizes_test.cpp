#include "search/attributes/folder_sizes.h"

#include <gtest/gtest.h>

#include "search/attributes/attr_cache.h"
#include "support/gives.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(FolderSizes, AddUpAlongTheParents) {
  const auto volume = MakeTestVolume(u"Q:");
  AddFolder(*volume, u"a", kRootFrnOfTests, 100);
  AddFolder(*volume, u"b", 100, 101);
  AddFile(*volume, u"1", 101, 200);
  AddFile(*volume, u"2", 101, 201);
  AddFile(*volume, u"3", 100, 202);
  AddFile(*volume, u"4", 100, 203);
  AddFile(*volume, u"never seen", 100, 204);
  StoreAttr(*volume, 200, {.size = 1, .valid = true});
  StoreAttr(*volume, 201, {.size = 20, .valid = true});
  StoreAttr(*volume, 202, {.size = 300, .valid = true});
  StoreAttr(*volume, 203, {.size = 4'000, .valid = false});
  uint64_t size = 0;
  EXPECT_FALSE(Gives(GetFolderSize(*volume, 100, IfDirty::kLeave), size));
  ASSERT_TRUE(Gives(GetFolderSize(*volume, 101, IfDirty::kRebuild), size));
  EXPECT_EQ(size, 21u);
  ASSERT_TRUE(Gives(GetFolderSize(*volume, 100, IfDirty::kRebuild), size));
  EXPECT_EQ(size, 321u);
  ASSERT_TRUE(Gives(GetFolderSize(*volume, kRootFrnOfTests, IfDirty::kRebuild), size));
  EXPECT_EQ(size, 321u);
  EXPECT_FALSE(volume->folderSizesDirty);
}

TEST(FolderSizes, PreferTheSizesOfAScan) {
  const auto volume = MakeTestVolume(u"Q:");
  const uint64_t frn = 0x0007'0000'0000'00C8;
  AddFile(*volume, u"1", kRootFrnOfTests, frn);
  StoreAttr(*volume, frn, {.size = 1, .valid = true});
  FrnMap<MftSize> sizes;
  sizes[0xC8] = {.logical = 500, .allocated = 512};
  InstallMftSizes(*volume, sizes);
  uint64_t size = 0;
  ASSERT_TRUE(Gives(GetFolderSize(*volume, kRootFrnOfTests, IfDirty::kLeave), size));
  EXPECT_EQ(size, 500u);
}

TEST(FolderSizes, GoNoFurtherThanSixtyFourParents) {
  const auto volume = MakeTestVolume(u"Q:");
  uint64_t parent = kRootFrnOfTests;
  for (uint64_t frn = 1'000; frn < 1'100; ++frn) {
    AddFolder(*volume, u"d", parent, frn);
    parent = frn;
  }
  AddFile(*volume, u"deep", parent, 5'000);
  StoreAttr(*volume, 5'000, {.size = 9, .valid = true});
  uint64_t size = 0;
  for (uint64_t frn = 1'099; frn >= 1'099 - 63; --frn) {
    size = 0;
    EXPECT_TRUE(Gives(GetFolderSize(*volume, frn, IfDirty::kRebuild), size));
    EXPECT_EQ(size, 9u) << frn;
  }
  EXPECT_FALSE(Gives(GetFolderSize(*volume, 1'099 - 64, IfDirty::kRebuild), size));
}

TEST(FolderSizes, CountParentsThatAreUnknownOrDeletedAndGoNoFurther) {
  const auto volume = MakeTestVolume(u"Q:");
  const uint32_t folder = AddFolder(*volume, u"gone", kRootFrnOfTests, 100);
  AddFile(*volume, u"1", 100, 200);
  AddFile(*volume, u"2", 777, 201);
  StoreAttr(*volume, 200, {.size = 1, .valid = true});
  StoreAttr(*volume, 201, {.size = 2, .valid = true});
  MarkDeleted(*volume, folder);
  uint64_t size = 0;
  EXPECT_TRUE(Gives(GetFolderSize(*volume, 100, IfDirty::kRebuild), size));
  EXPECT_TRUE(Gives(GetFolderSize(*volume, 777, IfDirty::kRebuild), size));
  EXPECT_FALSE(Gives(GetFolderSize(*volume, kRootFrnOfTests, IfDirty::kRebuild), size));
}

TEST(FolderSizes, EndOnACircle) {
  const auto volume = MakeTestVolume(u"Q:");
  AddFolder(*volume, u"a", 101, 100);
  AddFolder(*volume, u"b", 100, 101);
  AddFile(*volume, u"1", 100, 200);
  StoreAttr(*volume, 200, {.size = 1, .valid = true});
  uint64_t size = 0;
  ASSERT_TRUE(Gives(GetFolderSize(*volume, 100, IfDirty::kRebuild), size));
  EXPECT_EQ(size, 32u);  // each second of 64 steps
}

}  // namespace
}  // namespace quilmark
