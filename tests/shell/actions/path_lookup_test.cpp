#include "shell/actions/path_lookup.h"

#include <gtest/gtest.h>

#include <random>

#include "platform/text.h"
#include "shell/actions/recent_file.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// A folder "Dir" with "a.txt" in it, and "a.txt" in the root.
struct Drive {
  VolumeIndex& volume;
  uint32_t atRoot, folder, inFolder;
};

Drive AddDrive(SearchEngine& engine, std::u16string_view letter) {
  auto made = MakeTestVolume(letter);
  VolumeIndex& volume = *made;
  const uint32_t atRoot = AddFile(volume, u"a.txt");
  const uint32_t folder = AddFolder(volume, u"Dir");
  const uint32_t inFolder = AddFile(volume, u"a.txt", volume.records[folder].frn);
  AddVolume(engine, std::move(made));
  return {volume, atRoot, folder, inFolder};
}

std::vector<MatchItem> ItemsOf(const SearchEngine& engine, const std::vector<std::u16string>& paths) {
  std::vector<MatchItem> items;
  for (const FoundPath& found : FindPaths(engine, paths)) items.push_back(found.item);
  return items;
}

using Items = std::vector<MatchItem>;
constexpr MatchItem kNotFound;

TEST(PathLookup, TellsFilesOfOneNameApartByTheirFolders) {
  SearchEngine engine;
  const Drive c = AddDrive(engine, u"C:"), d = AddDrive(engine, u"D:");
  EXPECT_EQ(
      ItemsOf(engine, {u"c:/dir/A.TXT", u"C:\\a.txt", u"D:\\Dir", u"C:\\Other\\a.txt", u"d:\\a.txt"}),
      (Items{{&c.volume, c.inFolder},
             {&c.volume, c.atRoot},
             {&d.volume, d.folder},
             kNotFound,
             {&d.volume, d.atRoot}}));
}

TEST(PathLookup, FindsNothingForWhatIsNoPath) {
  SearchEngine engine;
  AddDrive(engine, u"C:");
  EXPECT_EQ(ItemsOf(engine, {u"", u"C:", u"a.txt", u"C:\\", u"E:\\a.txt", u"\\\\host\\a.txt"}),
            Items(6));
  EXPECT_TRUE(FindPaths(engine, {}).empty());
}

TEST(PathLookup, LeavesOutWhatIsGone) {
  SearchEngine engine;
  const Drive c = AddDrive(engine, u"C:"), d = AddDrive(engine, u"D:");
  MarkDeleted(c.volume, c.atRoot);
  d.volume.valid = false;
  EXPECT_EQ(ItemsOf(engine, {u"C:\\a.txt", u"D:\\a.txt"}), Items(2));
  d.volume.valid = true;
  d.volume.busy = true;
  EXPECT_EQ(ItemsOf(engine, {u"C:\\a.txt", u"D:\\a.txt"}), Items(2));
}

TEST(PathLookup, TheFirstOfEqualFilesCounts) {
  SearchEngine engine;
  const Drive c = AddDrive(engine, u"C:");
  const uint32_t upper = AddFile(c.volume, u"SAME"), lower = AddFile(c.volume, u"same");
  EXPECT_EQ(ItemsOf(engine, {u"C:\\same", u"C:\\SAME"}),
            (Items{{&c.volume, upper}, {&c.volume, upper}}));
  MarkDeleted(c.volume, upper);
  EXPECT_EQ(ItemsOf(engine, {u"C:\\same"}), (Items{{&c.volume, lower}}));
}

TEST(PathLookup, FollowsNamesThatStandApart) {
  SearchEngine engine;
  const Drive c = AddDrive(engine, u"C:");
  RenameRecord(c.volume, c.inFolder, c.volume.records[c.folder].frn, u"b.txt");
  const std::u16string odd = std::u16string(u"o\0dd", 4);
  const uint32_t oddRecord = AddFile(c.volume, odd);
  EXPECT_EQ(ItemsOf(engine, {u"C:\\Dir\\a.txt", u"C:\\Dir\\B.txt", u"C:\\" + odd}),
            (Items{kNotFound, {&c.volume, c.inFolder}, {&c.volume, oddRecord}}));
}

TEST(PathLookup, SaysOfWhichBuildARecordIs) {
  SearchEngine engine;
  const Drive c = AddDrive(engine, u"C:");
  c.volume.builds = 7;
  EXPECT_EQ(FindPaths(engine, std::vector<std::u16string>{u"C:\\a.txt"})[0].build, 7u);
}

// What the one pass is to be equal to: a look through all records for each path.
MatchItem PlainLookup(VolumeIndex& volume, const std::u16string& path) {
  for (uint32_t index = 0; index < volume.records.size(); ++index) {
    if (volume.records[index].deleted) continue;
    if (ComparablePath(BuildPath(volume, index)) == ComparablePath(path)) return {&volume, index};
  }
  return {};
}

TEST(PathLookup, AnswersAsALookThroughAllRecordsDoes) {
  std::mt19937 random(7);
  SearchEngine engine;
  VolumeIndex& volume = *AddVolume(engine, MakeTestVolume(u"Q:"));
  std::vector<uint64_t> folders = {kRootFrnOfTests};
  std::vector<std::u16string> paths;
  for (int i = 0; i < 3'000; ++i) {
    const uint64_t parent = folders[random() % folders.size()];
    const std::u16string name = RandomName(random, 5);
    const bool isFolder = random() % 8 == 0;
    const uint32_t index = isFolder ? AddFolder(volume, name, parent) : AddFile(volume, name, parent);
    if (isFolder) folders.push_back(volume.records[index].frn);
    if (random() % 16 == 0) MarkDeleted(volume, index);
    if (random() % 10 == 0) paths.push_back(BuildPath(volume, index));
    if (random() % 40 == 0) paths.push_back(BuildPath(volume, index) + u"x");
  }
  std::vector<MatchItem> wanted;
  for (const std::u16string& path : paths) {
    const size_t slash = path.rfind(u'\\');
    wanted.push_back(slash == path.npos ? MatchItem{} : PlainLookup(volume, path));
  }
  ASSERT_GT(paths.size(), 200u);
  EXPECT_EQ(ItemsOf(engine, paths), wanted);
}

}  // namespace
}  // namespace quilmark
