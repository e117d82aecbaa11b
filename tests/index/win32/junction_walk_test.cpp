// A walk over a junction of a real folder.
#include <gtest/gtest.h>

#include <algorithm>

#include "index/build/directory_walk.h"
#include "index/build/folder_reader.h"
#include "index/engine/search_engine.h"
#include "support/host_link.h"
#include "support/mapped_drive.h"

namespace quilmark {
namespace {

std::vector<std::u16string> PathsOf(const VolumeIndex& volume) {
  std::vector<std::u16string> paths;
  for (uint32_t i = 0; i < volume.records.size(); ++i) paths.push_back(BuildPath(volume, i));
  std::sort(paths.begin(), paths.end());
  return paths;
}

TEST(JunctionWalk, EntersAJunctionAsAFolder) {
  const std::u16string folder = FolderWithLink(u"quilmark-test-entered");
  MakeFolder(folder + u"\\behind\\sub");
  const MappedDrive drive(u'Q', folder);
  const LinksAsJunctions junctions;
  VolumeIndex volume;
  ASSERT_TRUE(BuildWalkVolume(volume, u"Q:", u"folder"));
  EXPECT_EQ(PathsOf(volume), (std::vector<std::u16string>{u"Q:\\behind", u"Q:\\behind\\sub", u"Q:\\link",
                                                          u"Q:\\link\\sub"}));
}

TEST(JunctionWalk, RepeatsTheNamesBelowOneThatLeadsBackAsFarAsAPlainPathGoes) {
  const std::u16string link(30, u'l');
  const MappedDrive drive(u'Q', FolderWithLink(u"quilmark-test-leading-back", link, u"."));
  const LinksAsJunctions junctions;
  VolumeIndex volume;
  ASSERT_TRUE(BuildWalkVolume(volume, u"Q:", u"folder"));
  const size_t levels = (kLongestLinkedPath - 2) / (link.size() + 1);
  const auto paths = PathsOf(volume);
  EXPECT_EQ(paths.size(), 2 * (levels + 1)) << "the link and the folder beside it, at each level";
  const auto longest = std::max_element(
      paths.begin(), paths.end(), [](const auto& a, const auto& b) { return a.size() < b.size(); });
  EXPECT_EQ(longest->size(), 2 + (levels + 1) * (link.size() + 1));
}

}  // namespace
}  // namespace quilmark
