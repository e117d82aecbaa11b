#include "index/tables/volume_index.h"

#include <gtest/gtest.h>

#include <map>
#include <random>

#include "support/volumes.h"

namespace quilmark {
namespace {

TEST(VolumeIndex, RenameKeepsTheIndexAndGrowsThePool) {
  const auto volume = MakeTestVolume();
  const uint32_t index = AddFile(*volume, u"old.txt", kRootFrnOfTests, 77);
  const size_t before = volume->renamed[0].pool.textCount;
  RenameRecord(*volume, index, kRootFrnOfTests, u"New.txt");
  EXPECT_EQ(volume->renamed[0].pool.textCount, before + 1);
  EXPECT_EQ(NameOf(volume->records[index]), u"New.txt");
  EXPECT_EQ(FoldedNameOf(volume->records[index]), u"new.txt");
  EXPECT_EQ(volume->records[index].frn, 77u);
  EXPECT_EQ(IndexOf(volume->frnToIndex, volume->records, 77), index);
  EXPECT_EQ(FindBrokenInvariant(*volume), "");
}

TEST(VolumeIndex, RecreatedReferenceReusesTheRecord) {
  const auto volume = MakeTestVolume();
  const uint32_t index = AddFile(*volume, u"a.txt");
  MarkDeleted(*volume, index);
  EXPECT_EQ(volume->deletedCount, 1u);
  RenameRecord(*volume, index, kRootFrnOfTests, u"b.txt");
  EXPECT_EQ(volume->deletedCount, 0u);
  EXPECT_FALSE(volume->records[index].deleted);
  EXPECT_EQ(FindBrokenInvariant(*volume), "");
}

TEST(VolumeIndex, DeletingTwiceCountsOnce) {
  const auto volume = MakeTestVolume();
  const uint32_t index = AddFile(*volume, u"a.txt");
  MarkDeleted(*volume, index);
  MarkDeleted(*volume, index);
  EXPECT_EQ(volume->deletedCount, 1u);
  EXPECT_EQ(FindBrokenInvariant(*volume), "");
}

TEST(VolumeIndex, EmptyNameIsARecordLikeAnyOther) {
  const auto volume = MakeTestVolume();
  const uint32_t index = AddFile(*volume, u"");
  AddFile(*volume, u"next");
  EXPECT_EQ(NameOf(volume->records[index]), u"");
  EXPECT_EQ(BuildPath(*volume, index), u"C:\\");
  EXPECT_EQ(FindBrokenInvariant(*volume), "");
}

TEST(VolumeIndex, NameWithNulStandsApart) {
  const auto volume = MakeTestVolume();
  const std::u16string_view name(u"a\0b", 3);
  const uint32_t index = AddFile(*volume, name);
  AddFile(*volume, u"next");
  EXPECT_EQ(NameOf(volume->records[index]), name);
  EXPECT_EQ(volume->apartCount, 1u);
  EXPECT_EQ(FindBrokenInvariant(*volume), "");
}

TEST(VolumeIndex, TellsAFolderFromAFileAndTheLivingFromTheDeleted) {
  const auto volume = MakeTestVolume();
  const uint32_t folder = AddFolder(*volume, u"dir", kRootFrnOfTests, 70);
  const uint32_t file = AddFile(*volume, u"a.txt", 70, 71);
  EXPECT_EQ(KindOf(*volume, folder)->frn, 70u);
  EXPECT_TRUE(KindOf(*volume, folder)->isDirectory);
  EXPECT_EQ(KindOfLocked(*volume, file)->frn, 71u);
  EXPECT_FALSE(KindOfLocked(*volume, file)->isDirectory);
  EXPECT_FALSE(KindOf(*volume, file)->isDeleted);
  MarkDeleted(*volume, file);
  EXPECT_TRUE(KindOf(*volume, file)->isDeleted);
  EXPECT_FALSE(KindOf(*volume, file + 1).has_value());
}

TEST(VolumeIndex, ResetLeavesNothing) {
  const auto volume = MakeTestVolume();
  AddFile(*volume, u"a.txt");
  MarkDeleted(*volume, AddFile(*volume, u"b.txt"));
  RenameRecord(*volume, AddFile(*volume, u"c.txt"), kRootFrnOfTests, u"d.txt");
  volume->attrs[7] = {.size = 1, .valid = true};
  volume->mftSizes[7] = {.logical = 1};
  volume->folderSizes[7] = 1;
  volume->folderSizesDirty = false;
  ResetVolumeTables(*volume);
  EXPECT_TRUE(volume->records.empty());
  EXPECT_EQ(volume->names.usedInChunk, volume->names.chunkCapacity);
  EXPECT_EQ(volume->renamed[0].pool.usedInChunk, volume->renamed[0].pool.chunkCapacity);
  EXPECT_EQ(SizeOf(volume->frnToIndex), 0u);
  EXPECT_TRUE(volume->attrs.empty());
  EXPECT_TRUE(volume->mftSizes.empty());
  EXPECT_TRUE(volume->folderSizes.empty());
  EXPECT_TRUE(volume->folderSizesDirty);
  EXPECT_EQ(volume->deletedCount, 0u);
  EXPECT_EQ(volume->apartCount, 0u);
  EXPECT_EQ(FindBrokenInvariant(*volume), "");
}

TEST(VolumeIndex, RecordsStayInPlaceWhileTheStoreGrows) {
  const auto volume = MakeTestVolume();
  const FileRecord* const root = &volume->records[0];
  for (int i = 0; i < 200'000; ++i) AddFile(*volume, u"x");
  EXPECT_EQ(root, &volume->records[0]);
  EXPECT_EQ(volume->records.size(), 200'001u);
}

TEST(VolumeIndex, CheckSeesEachBrokenInvariant) {
  const auto broken = [](auto spoil) {
    const auto volume = MakeTestVolume();
    AddFile(*volume, u"a.txt");
    spoil(*volume);
    return FindBrokenInvariant(*volume);
  };
  EXPECT_NE(broken([](VolumeIndex& v) { v.records[1].deleted = 1; }), "");
  EXPECT_NE(broken([](VolumeIndex& v) { v.deletedCount = 3; }), "");
  EXPECT_NE(broken([](VolumeIndex& v) { v.records[1].frn = 1; }), "");
  EXPECT_NE(broken([](VolumeIndex& v) { v.records[1].name = v.records[0].name; }), "");
  EXPECT_NE(broken([](VolumeIndex& v) { StoreName(v.names, u"lost"); }), "");
  EXPECT_NE(broken([](VolumeIndex& v) {
              MarkDeleted(v, 1);
              v.attrs[v.records[1].frn] = {};
            }),
            "");
}

TEST(VolumeIndex, RandomEditsKeepTheInvariants) {
  std::mt19937 random(3);
  const auto volume = MakeTestVolume();
  volume->names.chunkCapacity = volume->names.usedInChunk = 1'000;
  std::map<uint32_t, std::u16string> alive;
  for (int i = 0; i < 20'000; ++i) {
    const auto index = static_cast<uint32_t>(1 + random() % volume->records.size());
    std::u16string name = RandomName(random, 30);
    if (index >= volume->records.size() || random() % 2 == 0) {
      alive[AddFile(*volume, name)] = name;
    } else if (random() % 2 == 0) {
      MarkDeleted(*volume, index);
      alive.erase(index);
    } else {
      RenameRecord(*volume, index, kRootFrnOfTests, name);
      alive[index] = name;
    }
  }
  ASSERT_EQ(FindBrokenInvariant(*volume), "");
  for (uint32_t i = 1; i < volume->records.size(); ++i) {
    const auto expected = alive.find(i);
    ASSERT_EQ(volume->records[i].deleted, expected == alive.end());
    if (expected != alive.end()) {
      ASSERT_EQ(NameOf(volume->records[i]), expected->second);
    }
  }
}

}  // namespace
}  // namespace quilmark
