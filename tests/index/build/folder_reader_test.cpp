#include "index/build/folder_reader.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <vector>

namespace quilmark {
namespace {

std::atomic<int> listed = 0;

void AddEntry(FolderListing& listing, std::u16string_view name, bool isDirectory, bool isLink = false) {
  listing.entries.push_back({.nameOffset = static_cast<uint32_t>(listing.names.size()),
                             .nameLength = static_cast<uint16_t>(name.size()),
                             .isDirectory = isDirectory,
                             .isLink = isLink});
  listing.names += name;
}

// Every folder holds a file and two folders.
bool ListTwoFolders(std::u16string_view, FolderListing& listing) {
  ++listed;
  AddEntry(listing, u"a", true);
  AddEntry(listing, u"file", false);
  AddEntry(listing, u"b", true);
  return true;
}

// A folder that holds a link to itself.
bool ListALink(std::u16string_view, FolderListing& listing) {
  ++listed;
  AddEntry(listing, u"link", true, true);
  return true;
}

std::shared_ptr<PendingFolder> Root() {
  listed = 0;
  auto root = std::make_shared<PendingFolder>();
  root->path = u"X:";
  return root;
}

// Paths in the order of a walk, as BuildWalkVolume asks for them.
void Walk(FolderReader& reader, std::shared_ptr<PendingFolder> folder,
          std::vector<std::u16string>& paths) {
  reader.Read(*folder);
  paths.push_back(folder->path);
  for (auto& subfolder : folder->subfolders) Walk(reader, std::move(subfolder), paths);
  reader.Release(std::move(folder));
}

class FolderReaderThreads : public testing::TestWithParam<unsigned> {};

TEST_P(FolderReaderThreads, ReadEachFolderOnceInTheOrderOfTheWalk) {
  FolderReader reader(ListTwoFolders, GetParam(), 2);
  std::vector<std::u16string> paths;
  Walk(reader, Root(), paths);
  const std::vector<std::u16string> expected = {u"X:",    u"X:\\a",    u"X:\\a\\a", u"X:\\a\\b",
                                                u"X:\\b", u"X:\\b\\a", u"X:\\b\\b"};
  EXPECT_EQ(paths, expected);
  EXPECT_EQ(listed, 7);
}

INSTANTIATE_TEST_SUITE_P(Counts, FolderReaderThreads, testing::Values(1u, 2u, 8u));

TEST(FolderReader, OffersNothingBelowTheDeepestLevel) {
  FolderReader reader(ListTwoFolders, 1, 0);
  const auto root = Root();
  reader.Read(*root);
  EXPECT_EQ(root->listing.entries.size(), 3u);
  EXPECT_TRUE(root->subfolders.empty());
}

TEST(FolderReader, EntersALinkOnlyWhileItsPathIsShort) {
  FolderReader reader(ListALink, 1, 1'000);
  std::vector<std::u16string> paths;
  Walk(reader, Root(), paths);
  EXPECT_EQ(paths[1], u"X:\\link");
  EXPECT_GT(paths.back().size(), kLongestLinkedPath) << "listed as an entry, and asked for nothing";
  EXPECT_LE(paths[paths.size() - 2].size(), kLongestLinkedPath);
  EXPECT_EQ(listed, static_cast<int>(paths.size()) - 1);
}

}  // namespace
}  // namespace quilmark
