#include <gtest/gtest.h>

#include <string>

#include "platform/files.h"
#include "support/listing.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(FolderListing, GivesNamesAndKindsWithoutDotAndDotDot) {
  const ScratchFolder folder;
  folder.MakeFile("plain.txt", "x");
  folder.MakeFile("UPPER.TXT");
  folder.MakeFile("..two dots in front");
  folder.MakeFile(".dot");
  folder.MakeFolder("sub/below");
  EXPECT_EQ(EntriesIn(folder.Path()), (EntrySet{{u"plain.txt", EntryKind::kFile},
                                                {u"UPPER.TXT", EntryKind::kFile},
                                                {u"..two dots in front", EntryKind::kFile},
                                                {u".dot", EntryKind::kFile},
                                                {u"sub", EntryKind::kFolder}}));
}

TEST(FolderListing, KeepsEveryScriptOfAName) {
  const EntrySet names{{u"\u0416\u0443\u043A.txt", EntryKind::kFile},
                       {u"\u9F98\u9F98", EntryKind::kFile},
                       {u"\U0001F600 smile", EntryKind::kFile},
                       {u"a\u0301 and \u00E1", EntryKind::kFile}};
  const ScratchFolder folder;
  for (const auto& [name, kind] : names) folder.MakeFile(name);
  EXPECT_EQ(EntriesIn(folder.Path()), names);
}

TEST(FolderListing, AnEmptyFolderIsListedAndHasNoEntries) {
  const ScratchFolder folder;
  FolderListing listing;
  EXPECT_TRUE(ListFolder(folder.Path(), listing));
  EXPECT_TRUE(listing.entries.empty());
  EXPECT_TRUE(listing.names.empty());
}

TEST(FolderListing, TakesTheFormerFolderOut) {
  const ScratchFolder folder;
  folder.MakeFile("first/a.txt");
  folder.MakeFile("first/b.txt");
  folder.MakeFile("second/c.txt");
  FolderListing listing;
  ASSERT_TRUE(ListFolder(folder.PathOf(u"first"), listing));
  ASSERT_TRUE(ListFolder(folder.PathOf(u"second"), listing));
  EXPECT_EQ(EntriesOf(listing), (EntrySet{{u"c.txt", EntryKind::kFile}}));
  EXPECT_FALSE(ListFolder(folder.PathOf(u"third"), listing));
  EXPECT_TRUE(listing.entries.empty());
}

TEST(FolderListing, FailsForWhatIsNoFolder) {
  const ScratchFolder folder;
  folder.MakeFile("file.txt", "x");
  FolderListing listing;
  EXPECT_FALSE(ListFolder(folder.PathOf(u"missing"), listing));
  EXPECT_FALSE(ListFolder(folder.PathOf(u"file.txt"), listing));
  EXPECT_FALSE(ListFolder(u"", listing));
  EXPECT_FALSE(ListFolder(folder.Path() + std::u16string(1, u'\0') + u"tail", listing));
}

TEST(FolderListing, TakesATrailingSeparator) {
  const ScratchFolder folder;
  folder.MakeFile("sub/a.txt");
  EXPECT_EQ(EntriesIn(folder.PathOf(u"sub\\")), (EntrySet{{u"a.txt", EntryKind::kFile}}));
}

TEST(FolderListing, ReadsAMappedDriveAtItsRootAndBelow) {
  const ScratchFolder folder;
  folder.MakeFile("sub/deeper/a.txt");
  const MappedDrive drive(u'Q', folder.Path());
  const EntrySet root{{u"sub", EntryKind::kFolder}};
  EXPECT_EQ(EntriesIn(u"Q:"), root);
  EXPECT_EQ(EntriesIn(u"Q:\\"), root);
  EXPECT_EQ(EntriesIn(u"q:\\"), root);
  EXPECT_EQ(EntriesIn(u"Q:\\sub"), (EntrySet{{u"deeper", EntryKind::kFolder}}));
  EXPECT_EQ(EntriesIn(u"Q:\\sub\\deeper"), (EntrySet{{u"a.txt", EntryKind::kFile}}));
}

TEST(FolderListing, HoldsTheLongestName) {
  const std::string longest(255, 'n');
  const ScratchFolder folder;
  folder.MakeFile(longest);
  EXPECT_EQ(EntriesIn(folder.Path()), (EntrySet{{std::u16string(255, u'n'), EntryKind::kFile}}));
}

TEST(FolderListing, GivesEachOfManyEntriesOnce) {
  EntrySet names;
  const ScratchFolder folder;
  for (int i = 0; i < 3'000; ++i) {
    const std::string name = "a name of some length " + std::to_string(i);
    folder.MakeFile(name);
    names.emplace(std::u16string(name.begin(), name.end()), EntryKind::kFile);
  }
  FolderListing listing;
  ASSERT_TRUE(ListFolder(folder.Path(), listing));
  EXPECT_EQ(listing.entries.size(), names.size());
  EXPECT_EQ(EntriesOf(listing), names);
}

}  // namespace
}  // namespace quilmark
