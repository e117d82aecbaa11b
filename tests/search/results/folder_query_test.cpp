#include "search/results/folder_query.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/drives.h"
#include "search/results/search_pipeline.h"
#include "support/scratch_folder.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

std::vector<std::u16string> ListedNames(VolumeIndex& volume, std::u16string_view folder) {
  ResultSet results;
  ListFolderFromIndex(volume, folder, results);
  std::vector<std::u16string> names;
  for (const MatchItem& hit : results) names.emplace_back(NameOf(volume.records[hit.index]));
  return names;
}

using Texts = std::vector<std::u16string>;

TEST(FolderQuery, ListsDirectChildrenInRecordOrder) {
  const auto volume = MakeTestVolume();
  AddFile(*volume, u"z.txt", 40);
  AddFolder(*volume, u"Users", kRootFrnOfTests, 40);
  AddFolder(*volume, u"me", 40, 41);
  AddFile(*volume, u"deep.txt", 41);
  AddFile(*volume, u"a.txt", 40);
  EXPECT_EQ(ListedNames(*volume, u"C:\\Users"), (Texts{u"z.txt", u"me", u"a.txt"}));
  EXPECT_EQ(ListedNames(*volume, u"c:\\uSERS"), (Texts{u"z.txt", u"me", u"a.txt"}));
}

TEST(FolderQuery, RootHasItsOwnEntriesAndThoseWhoseFolderIsUnknown) {
  const auto volume = MakeTestVolume();
  AddFolder(*volume, u"Users", kRootFrnOfTests, 40);
  AddFile(*volume, u"in.txt", 40);
  AddFile(*volume, u"lost.txt", 999);
  EXPECT_EQ(ListedNames(*volume, u"C:"), (Texts{u".", u"Users", u"lost.txt"}));
}

TEST(FolderQuery, ANameThatLooksLikeAPathCostsItsNeighboursNothing) {
  const auto volume = MakeTestVolume();
  AddFolder(*volume, u"d", kRootFrnOfTests, 40);
  AddFile(*volume, u"a/b", 40);
  AddFile(*volume, u"next.txt", 40);
  EXPECT_EQ(ListedNames(*volume, u"C:\\d"), Texts{u"next.txt"});
  EXPECT_EQ(ListedNames(*volume, u"C:\\d\\a"), Texts{u"a/b"});
}

TEST(FolderQuery, DeletedRecordsAreLeftOut) {
  const auto volume = MakeTestVolume();
  AddFolder(*volume, u"d", kRootFrnOfTests, 40);
  MarkDeleted(*volume, AddFile(*volume, u"gone.txt", 40));
  AddFile(*volume, u"here.txt", 40);
  EXPECT_EQ(ListedNames(*volume, u"C:\\d"), Texts{u"here.txt"});
}

TEST(FolderQuery, RenamedFolderIsListedUnderItsNewName) {
  const auto volume = MakeTestVolume();
  const uint32_t folder = AddFolder(*volume, u"old", kRootFrnOfTests, 40);
  AddFile(*volume, u"a.txt", 40);
  RenameRecord(*volume, folder, kRootFrnOfTests, u"new");
  EXPECT_EQ(ListedNames(*volume, u"C:\\old"), Texts{});
  EXPECT_EQ(ListedNames(*volume, u"C:\\new"), Texts{u"a.txt"});
}

TEST(FolderQuery, LargeVolumeIsListedAcrossItsGranules) {
  const auto volume = MakeTestVolume();
  AddFolder(*volume, u"a", kRootFrnOfTests, 40);
  AddFolder(*volume, u"b", kRootFrnOfTests, 41);
  size_t expected = 0;
  for (int i = 0; i < 10'000; ++i) {
    AddFile(*volume, u"f", i % 3 == 0 ? 40 : 41);
    expected += i % 3 == 0;
  }
  EXPECT_EQ(ListedNames(*volume, u"C:\\a").size(), expected);
}

TEST(FolderQuery, FolderIsListedWhateverDriveTheScopeNames) {
  const ScratchFolder host;
  std::filesystem::create_directories(host.HostPath() / "sub");
  ASSERT_TRUE(MapDrive(u'C', host.Path()));
  SearchHarness harness;
  auto volume = MakeTestVolume(u"C:");
  AddFolder(*volume, u"sub", kRootFrnOfTests, 40);
  AddFile(*volume, u"a.txt", 40);
  AddVolume(Engine(), std::move(volume));
  auto other = MakeTestVolume(u"D:");
  AddFile(*other, u"sub");
  AddVolume(Engine(), std::move(other));
  TheSearch().scope.scopeIndex = kScopeFirstVolume + 1;
  DoSearchAsync(u"\"C:/sub/\"", false, false);
  harness.KindsUntilFinal();
  EXPECT_EQ(harness.ShownPaths(), Texts{u"C:\\sub\\a.txt"});
  UnmapDrive(u'C');
}

}  // namespace
}  // namespace quilmark
