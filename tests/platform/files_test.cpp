#include "platform/files.h"

#include <gtest/gtest.h>

#include <string>

#include "support/environment.h"
#include "support/listing.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

using namespace std::string_literals;

TEST(Files, WrittenBytesAreReadBack) {
  const std::string bytes = "line\r\nline\n\0 \xFF\xFE end"s;
  const ScratchFolder folder;
  EXPECT_TRUE(WriteFileBytes(folder.PathOf(u"a.bin"), bytes));
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.bin")), bytes);
}

TEST(Files, AShorterTextLeavesNothingOfALongerOne) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "a longer text");
  EXPECT_TRUE(WriteFileBytes(folder.PathOf(u"a.txt"), "short"));
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.txt")), "short");
  EXPECT_TRUE(WriteFileBytes(folder.PathOf(u"a.txt"), ""));
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.txt")), "");
}

TEST(Files, AFileUpToTheLimitIsReadWhole) {
  const std::string bytes(100'000, 'b');
  const ScratchFolder folder;
  folder.MakeFile("a.bin", bytes);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.bin"), 100'000), bytes);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.bin"), 99'999), std::nullopt);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.bin"), 0), std::nullopt);
}

TEST(Files, ReadingFailsForWhatIsNoFile) {
  const ScratchFolder folder;
  folder.MakeFolder("sub");
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"missing.txt")), std::nullopt);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"sub")), std::nullopt);
  EXPECT_EQ(ReadFileBytes(u""), std::nullopt);
}

TEST(Files, WritingFailsWhereNoFileCanBe) {
  const ScratchFolder folder;
  folder.MakeFolder("sub");
  EXPECT_FALSE(WriteFileBytes(folder.PathOf(u"sub"), "x"));
  EXPECT_FALSE(WriteFileBytes(folder.PathOf(u"missing\\a.txt"), "x"));
  EXPECT_FALSE(AppendFileBytes(folder.PathOf(u"sub"), "x", "y"));
  EXPECT_FALSE(AppendFileBytes(folder.PathOf(u"missing\\a.txt"), "x", "y"));
}

TEST(Files, OnlyAnEmptyFileGetsTheFirstBytes) {
  const ScratchFolder folder;
  folder.MakeFile("empty.txt");
  for (const char16_t* name : {u"new.txt", u"empty.txt"}) {
    EXPECT_TRUE(AppendFileBytes(folder.PathOf(name), "one,", "first,"));
    EXPECT_TRUE(AppendFileBytes(folder.PathOf(name), "two", "first,"));
    EXPECT_EQ(ReadFileBytes(folder.PathOf(name)), "first,one,two");
  }
}

TEST(Files, RemovesFilesAndNothingElse) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "x");
  folder.MakeFolder("sub");
  EXPECT_TRUE(RemoveFile(folder.PathOf(u"a.txt")));
  EXPECT_FALSE(RemoveFile(folder.PathOf(u"a.txt")));
  EXPECT_FALSE(RemoveFile(folder.PathOf(u"sub")));
  EXPECT_EQ(EntriesIn(folder.Path()), (EntrySet{{u"sub", EntryKind::kFolder}}));
}

TEST(Files, GivesAnotherNameWhereNobodyHasIt) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "x");
  folder.MakeFile("taken.txt", "y");
  folder.MakeFolder("sub");
  EXPECT_EQ(RenamePath(folder.PathOf(u"a.txt"), folder.PathOf(u"b.txt")), 0u);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"b.txt")), "x");
  EXPECT_EQ(RenamePath(folder.PathOf(u"b.txt"), folder.PathOf(u"taken.txt")), 183u);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"taken.txt")), "y");
  EXPECT_EQ(RenamePath(folder.PathOf(u"a.txt"), folder.PathOf(u"c.txt")), 2u);
  EXPECT_EQ(RenamePath(folder.PathOf(u"sub"), folder.PathOf(u"other")), 0u);
  EXPECT_EQ(EntriesIn(folder.Path()), (EntrySet{{u"b.txt", EntryKind::kFile},
                                                {u"other", EntryKind::kFolder},
                                                {u"taken.txt", EntryKind::kFile}}));
}

TEST(Files, MakesOneLevelOfFolders) {
  const ScratchFolder folder;
  EXPECT_FALSE(MakeFolder(folder.PathOf(u"a\\b")));
  EXPECT_TRUE(MakeFolder(folder.PathOf(u"a")));
  EXPECT_TRUE(MakeFolder(folder.PathOf(u"a\\b")));
  EXPECT_TRUE(MakeFolder(folder.PathOf(u"a\\b")));
  EXPECT_TRUE(IsExistingFolder(folder.PathOf(u"a\\b")));
}

TEST(Files, AFileIsInTheWayOfAFolder) {
  const ScratchFolder folder;
  folder.MakeFile("a", "x");
  EXPECT_FALSE(MakeFolder(folder.PathOf(u"a")));
  EXPECT_FALSE(IsExistingFolder(folder.PathOf(u"a")));
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a")), "x");
}

TEST(Files, TellsPathsThatExist) {
  const ScratchFolder folder;
  folder.MakeFile("sub/a.txt");
  EXPECT_TRUE(IsExistingPath(folder.PathOf(u"sub")));
  EXPECT_TRUE(IsExistingPath(folder.PathOf(u"sub\\a.txt")));
  EXPECT_FALSE(IsExistingPath(folder.PathOf(u"sub\\b.txt")));
  EXPECT_TRUE(IsExistingFolder(folder.PathOf(u"sub")));
  EXPECT_FALSE(IsExistingFolder(folder.PathOf(u"other")));
  EXPECT_FALSE(IsExistingFolder(u""));
}

TEST(Files, APathOfAMappedDriveReachesTheFile) {
  const ScratchFolder folder;
  const MappedDrive drive(u'Q', folder.Path());
  EXPECT_TRUE(MakeFolder(u"Q:\\sub"));
  EXPECT_TRUE(WriteFileBytes(u"Q:\\sub\\a.txt", "text"));
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"sub\\a.txt")), "text");
  EXPECT_TRUE(AppendFileBytes(u"q:\\sub\\a.txt", " more", ""));
  EXPECT_EQ(ReadFileBytes(u"Q:\\sub\\a.txt"), "text more");
  EXPECT_TRUE(RemoveFile(u"Q:\\sub\\a.txt"));
  EXPECT_FALSE(IsExistingPath(folder.PathOf(u"sub\\a.txt")));
}

TEST(Files, APathOf2800CharactersWorks) {
  const ScratchFolder folder;
  // Below the temporary folder Windows is asked where a file lies, and Wine does not name one so deep.
  const ScopedEnvironment elsewhere("TMP", "C:\\windows");
  std::u16string path = folder.Path();
  while (path.size() < 2'800) {
    path += u"\\a folder whose name is long";
    ASSERT_TRUE(MakeFolder(path)) << path.size();
  }
  EXPECT_TRUE(WriteFileBytes(path + u"\\a.txt", "deep"));
  EXPECT_EQ(EntriesIn(path), (EntrySet{{u"a.txt", EntryKind::kFile}}));
  EXPECT_EQ(ReadFileBytes(path + u"\\a.txt"), "deep");
  EXPECT_TRUE(IsExistingFolder(path));
  EXPECT_TRUE(RemoveFile(path + u"\\a.txt"));
  EXPECT_EQ(EntriesIn(path), EntrySet{});
}

TEST(Files, AScratchFolderGoesWithItsDeepestContents) {
  std::u16string scratch;
  {
    const ScratchFolder folder;
    scratch = folder.Path();
    std::u16string path = scratch;
    for (int level = 0; level < 20; ++level) {
      path += u"\\a folder whose name is long";
      ASSERT_TRUE(MakeFolder(path));
    }
  }
  EXPECT_FALSE(IsExistingPath(scratch));
}

TEST(Files, ATypedPathIsMadeAbsolute) {
  const std::u16string current = PathFromHost("");
  EXPECT_TRUE(IsExistingFolder(current));
  EXPECT_EQ(PathFromHost("."), current);
  EXPECT_EQ(PathFromHost("a/b"), current + u"\\a\\b");
  EXPECT_EQ(PathFromHost("./a/../b/./c/"), current + u"\\b\\c");
  EXPECT_EQ(PathFromHost("\xD0\x96"), current + u"\\\u0416");
}

}  // namespace
}  // namespace quilmark
