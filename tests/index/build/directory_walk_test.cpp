#include "index/build/directory_walk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <fstream>
#include <map>
#include <mutex>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "index/engine/search_engine.h"
#include "platform/drives.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

struct ScriptedEntry {
  std::u16string name;
  bool isDirectory = false;
};

// A tree that exists only here: what each folder holds, by its path. A folder that is missing cannot be
// read.
using ScriptedTree = std::map<std::u16string, std::vector<ScriptedEntry>, std::less<>>;
ScriptedTree scriptedTree;

void AppendTo(FolderListing& listing, std::u16string_view name, bool isDirectory) {
  listing.entries.push_back({.nameOffset = static_cast<uint32_t>(listing.names.size()),
                             .nameLength = static_cast<uint16_t>(name.size()),
                             .isDirectory = isDirectory});
  listing.names += name;
}

bool ListScripted(std::u16string_view path, FolderListing& listing) {
  listing.Clear();
  const auto folder = scriptedTree.find(path);
  if (folder == scriptedTree.end()) return false;
  for (const ScriptedEntry& entry : folder->second) AppendTo(listing, entry.name, entry.isDirectory);
  return true;
}

// Every folder holds a file and a folder "down".
bool ListEndless(std::u16string_view, FolderListing& listing) {
  listing.Clear();
  AppendTo(listing, u"down", true);
  AppendTo(listing, u"file", false);
  return true;
}

// Every folder of the first three levels holds ten folders and ten files.
bool ListWide(std::u16string_view path, FolderListing& listing) {
  listing.Clear();
  const auto depth = std::count(path.begin(), path.end(), u'\\');
  for (char16_t digit = u'0'; digit <= u'9'; ++digit) {
    if (depth < 3) AppendTo(listing, u"d" + std::u16string(1, digit), true);
    AppendTo(listing, u"f" + std::u16string(1, digit), false);
  }
  return true;
}

// Listing "half" fails behind its second entry.
bool ListScriptedAndHalf(std::u16string_view path, FolderListing& listing) {
  if (!path.ends_with(u"half")) return ListScripted(path, listing);
  listing.Clear();
  AppendTo(listing, u"in", true);
  AppendTo(listing, u"file", false);
  return false;
}

// The program ends while one of the first folders is listed.
std::atomic<int> listingsUntilShutdown = 0;
bool ListWideUntilShutdown(std::u16string_view path, FolderListing& listing) {
  if (--listingsUntilShutdown == 0) ShutdownRequested = true;
  return ListWide(path, listing);
}

// The same, for the walking thread alone: memory runs out for every other.
std::thread::id walkingThread;
bool ListWideOrThrow(std::u16string_view path, FolderListing& listing) {
  ListWide(path, listing);
  if (std::this_thread::get_id() != walkingThread) throw std::bad_alloc();
  return true;
}

// 100 gates, a folder that hangs, and 200 folders of 10,000 files. Behind a gate the walking thread
// waits until another has come to the one that hangs.
struct HangingTree {
  std::mutex mutex;
  std::condition_variable changed;
  bool isHanging = false;
  size_t entriesRead = 0;
  size_t mostEntries = 0;  // when the folder answers at last
};
HangingTree* hangingTree = nullptr;
constexpr size_t kAheadOfTheBound = 600'000;  // the bound, and what two readers are in the middle of

void Hang(HangingTree& tree, std::unique_lock<std::mutex>& lock) {
  tree.isHanging = true;
  tree.changed.notify_all();
  tree.changed.wait_for(lock, std::chrono::seconds(2),
                        [&] { return tree.entriesRead > kAheadOfTheBound; });
  tree.mostEntries = tree.entriesRead;
}

bool ListHanging(std::u16string_view path, FolderListing& listing) {
  HangingTree& tree = *hangingTree;
  listing.Clear();
  if (path == u"D:") {
    for (int i = 0; i < 100; ++i) AppendTo(listing, u"gate", true);
    AppendTo(listing, u"hangs", true);
    for (int i = 0; i < 200; ++i) AppendTo(listing, u"full", true);
    return true;
  }
  if (path.ends_with(u"full")) {
    for (int i = 0; i < 10'000; ++i) AppendTo(listing, u"f", false);
  }
  std::unique_lock lock(tree.mutex);
  tree.entriesRead += listing.entries.size();
  tree.changed.notify_all();
  if (path.ends_with(u"hangs")) Hang(tree, lock);
  if (path.ends_with(u"gate") && std::this_thread::get_id() == walkingThread) {
    tree.changed.wait(lock, [&] { return tree.isHanging; });
  }
  return true;
}

std::vector<std::u16string> PathsOf(const VolumeIndex& volume) {
  std::vector<std::u16string> paths;
  for (uint32_t i = 0; i < volume.records.size(); ++i) paths.push_back(BuildPath(volume, i));
  return paths;
}

// Walks with one, two and eight threads: the outcome must not depend on it.
class DirectoryWalk : public testing::TestWithParam<unsigned> {
 protected:
  bool Build(FolderSource source) {
    return BuildWalkVolume(volume, u"D:", u"FAT32", {.source = source, .threads = GetParam()});
  }
  VolumeIndex volume;
};
INSTANTIATE_TEST_SUITE_P(Concurrency, DirectoryWalk, testing::Values(1, 2, 8));

TEST_P(DirectoryWalk, RecordsComeDepthFirstEachFolderBeforeItsContents) {
  scriptedTree = {{u"D:", {{u"a", true}, {u"z.txt"}, {u"b", true}}},
                  {u"D:\\a", {{u"inner", true}, {u"1.txt"}}},
                  {u"D:\\a\\inner", {{u"2.txt"}}},
                  {u"D:\\b", {{u"3.txt"}}}};
  ASSERT_TRUE(Build(ListScripted));
  EXPECT_EQ(PathsOf(volume),
            (std::vector<std::u16string>{u"D:\\a", u"D:\\a\\inner", u"D:\\a\\inner\\2.txt",
                                         u"D:\\a\\1.txt", u"D:\\z.txt", u"D:\\b", u"D:\\b\\3.txt"}));
  EXPECT_TRUE(volume.records[0].isDirectory);
  EXPECT_FALSE(volume.records[2].isDirectory);
  EXPECT_EQ(volume.fileSystem, u"FAT32");
  EXPECT_EQ(volume.journalId, 0u);
  EXPECT_EQ(volume.recordsRead, 7u);
  EXPECT_TRUE(volume.valid);
  EXPECT_FALSE(volume.busy);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

TEST_P(DirectoryWalk, EmptyVolumeFailsAndIsNotValid) {
  scriptedTree = {{u"D:", {}}};
  EXPECT_FALSE(Build(ListScripted));
  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.busy);
}

TEST_P(DirectoryWalk, RootThatCannotBeReadFails) {
  scriptedTree.clear();
  EXPECT_FALSE(Build(ListScripted));
}

TEST_P(DirectoryWalk, UnreadableFolderStaysAnEntryWithoutContents) {
  scriptedTree = {{u"D:", {{u"locked", true}, {u"z.txt"}}}};
  ASSERT_TRUE(Build(ListScripted));
  EXPECT_EQ(PathsOf(volume), (std::vector<std::u16string>{u"D:\\locked", u"D:\\z.txt"}));
}

TEST_P(DirectoryWalk, TreeIsCutBelow128Levels) {
  ASSERT_TRUE(Build(ListEndless));
  // Folders of depth 0 to 128 are listed: each gives a folder and a file.
  EXPECT_EQ(volume.records.size(), 2u * 129);
  uint32_t folders = 0;
  for (uint32_t i = 0; i < volume.records.size(); ++i) folders += volume.records[i].isDirectory;
  EXPECT_EQ(folders, 129u);
  EXPECT_EQ(NameOf(volume.records[128]), u"down");  // the one that is not entered
  EXPECT_EQ(NameOf(volume.records[129]), u"file");
}

TEST_P(DirectoryWalk, TopLevelEntryHasAPathOfTwoParts) {
  scriptedTree = {{u"D:", {{u"name"}}}};
  ASSERT_TRUE(Build(ListScripted));
  EXPECT_EQ(BuildPath(volume, 0), u"D:\\name");
  EXPECT_EQ(IndexOf(volume.frnToIndex, volume.records, 1), kRootWithoutRecord);
}

TEST_P(DirectoryWalk, ReadsItselfWhatFailedAheadOfIt) {
  walkingThread = std::this_thread::get_id();
  ASSERT_TRUE(Build(ListWideOrThrow));
  VolumeIndex plain;
  ASSERT_TRUE(BuildWalkVolume(plain, u"D:", u"FAT32", {.source = ListWide, .threads = 1}));
  EXPECT_EQ(PathsOf(volume), PathsOf(plain));
}

TEST_P(DirectoryWalk, LeavesAVolumeThatNoSearchLooksAtWhereMemoryRunsOut) {
  walkingThread = {};
  EXPECT_THROW(Build(ListWideOrThrow), std::bad_alloc);
  EXPECT_FALSE(volume.valid);
  EXPECT_FALSE(volume.busy);
}

TEST_P(DirectoryWalk, EveryBuildStartsTheReferencesAgain) {
  scriptedTree = {{u"D:", {{u"a"}, {u"b"}}}};
  ASSERT_TRUE(Build(ListScripted));
  ASSERT_TRUE(Build(ListScripted));
  EXPECT_EQ(volume.records.size(), 2u);
  EXPECT_EQ(volume.records[0].frn, 0x100000u);
  EXPECT_EQ(volume.records[1].frn, 0x100001u);
  EXPECT_EQ(volume.nextSyntheticFrn, 0x100002u);
}

TEST_P(DirectoryWalk, WideTreeIsTheSameForAnyNumberOfThreads) {
  ASSERT_TRUE(Build(ListWide));
  VolumeIndex alone;
  ASSERT_TRUE(BuildWalkVolume(alone, u"D:", u"FAT32", {.source = ListWide, .threads = 1}));
  EXPECT_EQ(volume.records.size(), 20u + 10 * 20 + 100 * 20 + 1'000 * 10);
  EXPECT_EQ(PathsOf(volume), PathsOf(alone));
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

// One folder with 200,000 files.
bool ListCrowded(std::u16string_view, FolderListing& listing) {
  listing.Clear();
  for (int i = 0; i < 200'000; ++i) AppendTo(listing, u"file", false);
  return true;
}

TEST_P(DirectoryWalk, FolderWithTwoHundredThousandEntries) {
  ASSERT_TRUE(Build(ListCrowded));
  EXPECT_EQ(volume.records.size(), 200'000u);
  EXPECT_EQ(BuildPath(volume, 199'999), u"D:\\file");
}

TEST_P(DirectoryWalk, ShutdownEndsTheWalkInTheMiddleOfAFolder) {
  listingsUntilShutdown = 3;
  Build(ListWideUntilShutdown);  // further threads may list all three ahead of the first entry
  ShutdownRequested = false;
  EXPECT_LT(volume.records.size(), 100u);  // of 11,110
  EXPECT_FALSE(volume.busy);
  EXPECT_EQ(FindBrokenInvariant(volume), "");
}

TEST_P(DirectoryWalk, KeepsWhatWasReadOfAFolderBeforeAFailure) {
  scriptedTree = {{u"D:", {{u"half", true}, {u"z.txt"}}}, {u"D:\\half\\in", {{u"x"}}}};
  ASSERT_TRUE(Build(ListScriptedAndHalf));
  EXPECT_EQ(PathsOf(volume),
            (std::vector<std::u16string>{u"D:\\half", u"D:\\half\\in", u"D:\\half\\in\\x",
                                         u"D:\\half\\file", u"D:\\z.txt"}));
}

TEST_P(DirectoryWalk, ShutdownEndsTheWalk) {
  ShutdownRequested = true;
  EXPECT_FALSE(Build(ListWide));
  ShutdownRequested = false;
  EXPECT_TRUE(volume.records.empty());
  EXPECT_FALSE(volume.busy);
}

TEST(DirectoryWalkAhead, KeepsToItsBoundWhileAFolderHangs) {
  HangingTree tree;
  hangingTree = &tree;
  walkingThread = std::this_thread::get_id();
  VolumeIndex volume;

  ASSERT_TRUE(BuildWalkVolume(volume, u"D:", u"FAT32", {.source = ListHanging, .threads = 2}));

  EXPECT_LE(tree.mostEntries, kAheadOfTheBound);
  EXPECT_EQ(volume.records.size(), 301u + 200 * 10'000);
}

// --- a real folder
// ---------------------------------------------------------------------------------------------

TEST(DirectoryWalkOnDisk, FolderThreeHundredLevelsDeepIsCutAndFreed) {
  const ScratchFolder folder;
  std::filesystem::path path = folder.HostPath();
  for (int level = 0; level < 300; ++level) path /= "d";
  std::filesystem::create_directories(path);
  ASSERT_TRUE(MapDrive(u'D', folder.Path()));
  VolumeIndex volume;
  EXPECT_TRUE(BuildWalkVolume(volume, u"D:", u"test"));
  UnmapDrive(u'D');
  EXPECT_EQ(volume.records.size(), 129u);
  EXPECT_EQ(BuildPath(volume, 2), u"D:\\d\\d\\d");
}

TEST(DirectoryWalkOnDisk, EveryNameOfARealFolderIsFound) {
  const ScratchFolder folder;
  for (const char* const name : {"a/b/c.txt", "a/d.txt", "e.txt"}) {
    std::filesystem::create_directories((folder.HostPath() / name).parent_path());
    std::ofstream file(folder.HostPath() / name);
    ASSERT_TRUE(file.good());
  }
  ASSERT_TRUE(MapDrive(u'D', folder.Path()));
  VolumeIndex volume;
  EXPECT_TRUE(BuildWalkVolume(volume, u"D:", u"test"));
  UnmapDrive(u'D');
  std::vector<std::u16string> paths = PathsOf(volume);
  std::sort(paths.begin(), paths.end());
  EXPECT_EQ(paths, (std::vector<std::u16string>{u"D:\\a", u"D:\\a\\b", u"D:\\a\\b\\c.txt",
                                                u"D:\\a\\d.txt", u"D:\\e.txt"}));
}

}  // namespace
}  // namespace quilmark
