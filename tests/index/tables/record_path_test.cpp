#include <gtest/gtest.h>

#include "index/tables/volume_index.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(BuildPath, FileInTheRootHasNoOtherComponent) {
  const auto volume = MakeTestVolume();
  EXPECT_EQ(BuildPath(*volume, AddFile(*volume, u"a.txt")), u"C:\\a.txt");
}

TEST(BuildPath, FoldersAreNamedFromTheOutermost) {
  const auto volume = MakeTestVolume();
  AddFolder(*volume, u"Users", kRootFrnOfTests, 40);
  AddFolder(*volume, u"me", 40, 41);
  EXPECT_EQ(BuildPath(*volume, AddFile(*volume, u"a.txt", 41)), u"C:\\Users\\me\\a.txt");
  EXPECT_EQ(BuildPathLocked(*volume, 2), u"C:\\Users\\me");
}

TEST(BuildPath, IndexPastTheEndIsTheBareDrive) {
  const auto volume = MakeTestVolume();
  EXPECT_EQ(BuildPath(*volume, 1), u"C:");
  EXPECT_EQ(BuildPath(*volume, 0xFFFF'FFFF), u"C:");
}

TEST(BuildPath, UnknownParentLeavesTheKnownPart) {
  const auto volume = MakeTestVolume();
  AddFolder(*volume, u"orphan", 999, 40);
  EXPECT_EQ(BuildPath(*volume, AddFile(*volume, u"a.txt", 40)), u"C:\\orphan\\a.txt");
}

TEST(BuildPath, DeletedParentStillHasItsName) {
  const auto volume = MakeTestVolume();
  const uint32_t folder = AddFolder(*volume, u"gone", kRootFrnOfTests, 40);
  const uint32_t file = AddFile(*volume, u"a.txt", 40);
  MarkDeleted(*volume, folder);
  EXPECT_EQ(BuildPath(*volume, file), u"C:\\gone\\a.txt");
}

TEST(BuildPath, RenamedFolderChangesThePathsBelowIt) {
  const auto volume = MakeTestVolume();
  const uint32_t folder = AddFolder(*volume, u"old", kRootFrnOfTests, 40);
  const uint32_t file = AddFile(*volume, u"a.txt", 40);
  RenameRecord(*volume, folder, kRootFrnOfTests, u"new");
  EXPECT_EQ(BuildPath(*volume, file), u"C:\\new\\a.txt");
}

TEST(BuildPath, HundredAndFiftyNestedFoldersKeepTheInnermost101Names) {
  const auto volume = MakeTestVolume();
  uint64_t parent = kRootFrnOfTests;
  for (uint64_t depth = 1; depth <= 150; ++depth) {
    AddFolder(*volume, u"d" + std::u16string(1, static_cast<char16_t>(u'0' + depth % 10)), parent,
              1'000 + depth);
    parent = 1'000 + depth;
  }
  std::u16string expected = u"C:";
  for (int depth = 50; depth <= 150; ++depth) {
    expected += u"\\d";
    expected.push_back(static_cast<char16_t>(u'0' + depth % 10));
  }
  EXPECT_EQ(BuildPath(*volume, 150), expected);
}

TEST(BuildPath, FoldersThatContainEachOtherEndAtTheLimit) {
  const auto volume = MakeTestVolume();
  AddFolder(*volume, u"a", 41, 40);
  AddFolder(*volume, u"b", 40, 41);
  EXPECT_EQ(BuildPath(*volume, 1).size(), 2u + 101 * 2);
}

TEST(BuildPath, WalkedRootEndsTheChain) {
  VolumeIndex volume;
  volume.drive = u"D:";
  SetIndexOf(volume.frnToIndex, volume.records, 1, kRootWithoutRecord);
  EXPECT_EQ(BuildPath(volume, AddFile(volume, u"a.txt", 1)), u"D:\\a.txt");
}

}  // namespace
}  // namespace quilmark
