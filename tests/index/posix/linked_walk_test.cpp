// A walk that enters links, as on Windows, over links that a host has.
#include <gtest/gtest.h>

#include <filesystem>

#include "index/build/directory_walk.h"
#include "index/engine/search_engine.h"
#include "platform/utf.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

constexpr size_t kMostListings = 20'000;
std::atomic<size_t> listings = 0;

// Follows links, and marks them. Gives up where the walk would take the memory of the machine.
bool ListFollowing(std::u16string_view path, FolderListing& listing) {
  listing.Clear();
  if (++listings > kMostListings) return false;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(HostPathBytes(path), error)) {
    const std::u16string name = FromUtf8(entry.path().filename().string());
    listing.entries.push_back({.nameOffset = static_cast<uint32_t>(listing.names.size()),
                               .nameLength = static_cast<uint16_t>(name.size()),
                               .isDirectory = entry.is_directory(error),
                               .isLink = entry.is_symlink(error)});
    listing.names += name;
  }
  return !error;
}

struct LinkedWalk : testing::Test {
  LinkedWalk() { listings = 0; }

  void Build() { ASSERT_TRUE(BuildWalkVolume(volume, u"Q:", u"folder", {.source = ListFollowing})); }
  size_t LongestPath() {
    size_t longest = 0;
    for (uint32_t i = 0; i < volume.records.size(); ++i) {
      longest = std::max(longest, BuildPath(volume, i).size());
    }
    return longest;
  }

  ScratchFolder folder;
  MappedDrive drive{u'Q', folder.Path()};
  VolumeIndex volume;
};

TEST_F(LinkedWalk, TwoLinksThatLeadBackEndWithThePathOfAPlainCall) {
  constexpr size_t kName = 30;
  for (const char letter : {'a', 'b'}) {
    fs::create_directory_symlink(folder.HostPath(), folder.HostPath() / std::string(kName, letter));
  }
  folder.MakeFile("f");
  Build();
  // "Q:" and so many names that the folder is still listed; each listing has three entries.
  constexpr size_t kLevels = (257 - 2) / (kName + 1);
  EXPECT_EQ(listings, (size_t{2} << kLevels) - 1);
  EXPECT_EQ(volume.records.size(), 3 * listings);
  EXPECT_EQ(LongestPath(), 2 + (kLevels + 1) * (kName + 1));
}

TEST_F(LinkedWalk, ALongPathIsKeptWhereNoLinkLeadsToIt) {
  const std::string longName(200, 'n');
  folder.MakeFile("real/" + longName + "/" + longName + "/file");
  fs::create_directory_symlink("real", folder.HostPath() / "link");
  Build();
  std::vector<std::u16string> files;
  for (uint32_t i = 0; i < volume.records.size(); ++i) {
    if (NameOf(volume.records[i]) == u"file") files.push_back(BuildPath(volume, i));
  }
  ASSERT_EQ(files.size(), 1u);
  EXPECT_TRUE(files[0].starts_with(u"Q:\\real\\"));
  EXPECT_GT(files[0].size(), 400u);
}

}  // namespace
}  // namespace quilmark
