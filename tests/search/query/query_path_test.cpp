#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "platform/drives.h"
#include "platform/files.h"
#include "search/query/query.h"
#include "support/gives.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

TEST(NormalizePathQuery, TurnsSlashesAndDropsTheLastOnes) {
  EXPECT_EQ(NormalizePathQuery(u"C:\\Windows/"), u"C:\\Windows");
  EXPECT_EQ(NormalizePathQuery(u"C:/Windows/System32\\/\\"), u"C:\\Windows\\System32");
  EXPECT_EQ(NormalizePathQuery(u"/usr/lib/"), u"\\usr\\lib");
}

TEST(NormalizePathQuery, TakesOffOnePairOfQuotes) {
  EXPECT_EQ(NormalizePathQuery(u"'C:/Windows'"), u"C:\\Windows");
  EXPECT_EQ(NormalizePathQuery(u"\"C:/Windows/\""), u"C:\\Windows");
  EXPECT_EQ(NormalizePathQuery(u"\"'C:\\x'\""), u"'C:\\x'");
}

TEST(NormalizePathQuery, KeepsQuotesThatAreNoPair) {
  EXPECT_EQ(NormalizePathQuery(u"\"C:\\x'"), u"\"C:\\x'");
  EXPECT_EQ(NormalizePathQuery(u"\"C:\\x\"/"), u"\"C:\\x\"");
  EXPECT_EQ(NormalizePathQuery(u"\""), u"\"");
}

TEST(NormalizePathQuery, TrimsOutsideTheQuotesOnly) {
  EXPECT_EQ(NormalizePathQuery(u" \t\"C:\\a \" \r\n"), u"C:\\a ");
}

TEST(NormalizePathQuery, ARootIsALetterAndAColon) {
  for (const char16_t* text : {u"C:", u"C:\\", u"C:/", u"C:\\\\\\", u"\"C:\\\""}) {
    EXPECT_EQ(NormalizePathQuery(text), u"C:") << testing::PrintToString(text);
  }
}

TEST(NormalizePathQuery, UpToThreeCharactersKeepTheirBackslash) {
  EXPECT_EQ(NormalizePathQuery(u"ab/"), u"ab\\");
  EXPECT_EQ(NormalizePathQuery(u"/"), u"\\");
  EXPECT_EQ(NormalizePathQuery(u"////"), u"\\\\\\");
}

TEST(NormalizePathQuery, NothingStaysNothing) {
  for (const char16_t* text : {u"", u" \t", u"\"\"", u"''"}) {
    EXPECT_EQ(NormalizePathQuery(text), u"") << testing::PrintToString(text);
  }
}

// Drives Q: and S: are a folder with the folder "dir" and the file "file" in it.
class IsExistingFolderQueryTest : public testing::Test {
 protected:
  void SetUp() override {
    root_ = fs::temp_directory_path() / ("query_path_" + std::to_string(std::random_device()()));
    fs::create_directories(root_ / "dir");
    std::ofstream(root_ / "file") << "x";
    ASSERT_TRUE(MapDrive(u'Q', HostRoot()));
    ASSERT_TRUE(MapDrive(u'S', HostRoot()));
  }
  void TearDown() override {
    UnmapDrive(u'Q');
    UnmapDrive(u'S');
    fs::remove_all(root_);
  }

  std::u16string HostRoot() const { return PathFromHost(root_.string()); }

  // The path of the folder that `text` lists; "none" if it lists none.
  static std::u16string Listed(std::u16string_view text) {
    std::u16string path = u"none";
    return Gives(IsExistingFolderQuery(text), path)
               ? path
               : (path == u"none" ? path : u"changed in spite of a refusal");
  }

 private:
  fs::path root_;
};

TEST_F(IsExistingFolderQueryTest, GivesTheNormalizedPath) {
  for (const char16_t* text : {u"Q:\\dir", u"Q:\\dir/", u"'Q:/dir'", u"\"Q:\\dir\\\""}) {
    EXPECT_EQ(Listed(text), u"Q:\\dir") << testing::PrintToString(text);
  }
}

TEST_F(IsExistingFolderQueryTest, ARootIsListedWithoutItsBackslash) {
  for (const char16_t* text : {u"Q:\\", u"Q:", u"Q:/"}) {
    EXPECT_EQ(Listed(text), u"Q:") << testing::PrintToString(text);
  }
}

TEST_F(IsExistingFolderQueryTest, RefusesWhatIsNoFolder) {
  for (const char16_t* text : {u"", u"''", u"Q:\\file", u"Q:\\missing", u"Q:\\dir\\dir"}) {
    EXPECT_EQ(Listed(text), u"none") << testing::PrintToString(text);
  }
}

TEST_F(IsExistingFolderQueryTest, OnlyTheUpperCaseLetterIsDriveS) {
  EXPECT_EQ(Listed(u"s:\\dir"), u"none");
  EXPECT_EQ(Listed(u"S:\\dir"), u"S:\\dir");
  EXPECT_EQ(Listed(u"\"s:\\dir\""), u"s:\\dir");
}

TEST_F(IsExistingFolderQueryTest, APathOfTheHostBelowADriveBecomesThePathOnIt) {
  UnmapDrive(u'S');
  EXPECT_EQ(Listed(HostRoot() + u"/dir/"), u"Q:\\dir");
  EXPECT_EQ(Listed(HostRoot()), u"Q:");
}

TEST_F(IsExistingFolderQueryTest, APathOfTheHostBelowNoDriveStaysAsItIs) {
  UnmapDrive(u'S');
  UnmapDrive(u'Q');
  EXPECT_EQ(Listed(HostRoot() + u"/dir"), HostRoot() + u"\\dir");
}

TEST(PathInDesktop, TheFolderAndWhatLiesBelowItPass) {
  EXPECT_TRUE(PathInDesktop(u"C:\\me\\Desktop", u"C:\\me\\Desktop"));
  EXPECT_TRUE(PathInDesktop(u"C:\\me\\Desktop\\a\\b.txt", u"C:\\me\\Desktop"));
}

TEST(PathInDesktop, CaseMakesNoDifference) {
  EXPECT_TRUE(PathInDesktop(u"c:\\ME\\desktop\\A.TXT", u"C:\\me\\Desktop"));
  EXPECT_TRUE(PathInDesktop(u"C:\\\u00C4\\x", u"C:\\\u00E4"));
}

TEST(PathInDesktop, ANeighbourWhoseNameBeginsAlikeFails) {
  EXPECT_FALSE(PathInDesktop(u"C:\\me\\Desktop2\\a", u"C:\\me\\Desktop"));
  EXPECT_FALSE(PathInDesktop(u"C:\\me\\Desktip", u"C:\\me\\Desktop"));
  EXPECT_FALSE(PathInDesktop(u"C:\\me\\Deskto", u"C:\\me\\Desktop"));
  EXPECT_FALSE(PathInDesktop(u"C:\\me", u"C:\\me\\Desktop"));
  EXPECT_FALSE(PathInDesktop(u"D:\\me\\Desktop\\a", u"C:\\me\\Desktop"));
}

TEST(PathInDesktop, SlashesAndLastBackslashesMakeNoDifference) {
  EXPECT_TRUE(PathInDesktop(u"C:/me/Desktop/a", u"C:\\me\\Desktop\\"));
  EXPECT_TRUE(PathInDesktop(u"C:\\me\\Desktop\\", u"C:/me/Desktop/"));
  EXPECT_TRUE(PathInDesktop(u"C:\\me\\Desktop\\\\", u"C:\\me\\Desktop"));
}

TEST(PathInDesktop, ADesktopMayBeARoot) {
  EXPECT_TRUE(PathInDesktop(u"C:\\a", u"C:\\"));
  EXPECT_TRUE(PathInDesktop(u"C:\\", u"C:"));
  EXPECT_FALSE(PathInDesktop(u"D:\\a", u"C:\\"));
}

TEST(PathInDesktop, AFolderAboveFailsWhateverStandsBehindItsText) {
  const std::u16string_view text = u"C:\\Users\\Desktop\\a.txt";
  EXPECT_TRUE(PathInDesktop(text, u"C:\\Users\\Desktop"));
  EXPECT_FALSE(PathInDesktop(text.substr(0, 8), u"C:\\Users\\Desktop"));
}

TEST(PathInDesktop, AnEmptyPathOrFolderFails) {
  EXPECT_FALSE(PathInDesktop(u"", u"C:\\me"));
  EXPECT_FALSE(PathInDesktop(u"C:\\me", u""));
  EXPECT_FALSE(PathInDesktop(u"", u""));
}

TEST(IsExistingFolderQuery, RelativePathIsNoFolder) {
  std::u16string path;
  EXPECT_FALSE(Gives(IsExistingFolderQuery(u"."), path));
  EXPECT_FALSE(Gives(IsExistingFolderQuery(u".."), path));
  EXPECT_FALSE(Gives(IsExistingFolderQuery(u"C:relative"), path));
}

}  // namespace
}  // namespace quilmark
