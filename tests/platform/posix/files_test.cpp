#include "platform/files.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>

#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

TEST(PosixFiles, APipeIsNeitherReadNorWrittenNorWaitedFor) {
  const ScratchFolder folder;
  ASSERT_EQ(mkfifo((folder.HostPath() / "pipe").c_str(), 0600), 0);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"pipe")), std::nullopt);
  EXPECT_FALSE(WriteFileBytes(folder.PathOf(u"pipe"), "x"));
  EXPECT_FALSE(AppendFileBytes(folder.PathOf(u"pipe"), "x", ""));
}

TEST(PosixFiles, AFileThatHidesItsSizeIsReadToItsEnd) {
  const std::optional<std::string> bytes = ReadFileBytes(u"\\proc\\self\\status");
  ASSERT_TRUE(bytes.has_value());
  EXPECT_TRUE(bytes->starts_with("Name:"));
  EXPECT_EQ(bytes->back(), '\n');
  EXPECT_EQ(ReadFileBytes(u"\\proc\\self\\status", 10), std::nullopt);
}

TEST(PosixFiles, QuestionsAboutFoldersFollowLinks) {
  const ScratchFolder folder;
  folder.MakeFolder("target");
  fs::create_directory_symlink("target", folder.HostPath() / "link");
  fs::create_symlink("nowhere", folder.HostPath() / "dangling");
  EXPECT_TRUE(IsExistingFolder(folder.PathOf(u"link")));
  EXPECT_TRUE(MakeFolder(folder.PathOf(u"link")));
  EXPECT_FALSE(IsExistingFolder(folder.PathOf(u"dangling")));
  EXPECT_FALSE(MakeFolder(folder.PathOf(u"dangling")));
  EXPECT_TRUE(IsExistingPath(folder.PathOf(u"dangling")));
}

TEST(PosixFiles, RemovingALinkLeavesItsTarget) {
  const ScratchFolder folder;
  folder.MakeFile("target.txt", "kept");
  fs::create_symlink("target.txt", folder.HostPath() / "link");
  EXPECT_TRUE(RemoveFile(folder.PathOf(u"link")));
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"target.txt")), "kept");
}

TEST(PosixFiles, RewritingThroughALinkKeepsTheLink) {
  const ScratchFolder folder;
  folder.MakeFile("target.txt", "old and long");
  fs::create_symlink("target.txt", folder.HostPath() / "link");
  EXPECT_TRUE(WriteFileBytes(folder.PathOf(u"link"), "new"));
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"target.txt")), "new");
  EXPECT_TRUE(fs::is_symlink(folder.HostPath() / "link"));
}

TEST(PosixFiles, ATypedPathIsTakenByItsNames) {
  EXPECT_EQ(PathFromHost("/"), u"\\");
  EXPECT_EQ(PathFromHost("//usr///lib//"), u"\\usr\\lib");
  EXPECT_EQ(PathFromHost("/usr/./lib/../share/."), u"\\usr\\share");
  EXPECT_EQ(PathFromHost("/../../etc"), u"\\etc");
  EXPECT_EQ(PathFromHost("/a/.../..b"), u"\\a\\...\\..b");
  EXPECT_EQ(PathFromHost("/back\\slash/\xFF"), u"\\back\xDC5Cslash\\\xDCFF");
}

TEST(PosixFiles, APathIsPrintedInTheBytesOfTheHost) {
  const MappedDrive drive(u'Q', u"\\srv\\\u0416");
  EXPECT_EQ(HostPathBytes(u"Q:\\a\\b.txt"), "/srv/\xD0\x96/a/b.txt");
  EXPECT_EQ(HostPathBytes(u"Q:"), "/srv/\xD0\x96");
  EXPECT_EQ(HostPathBytes(u"Q:\\"), "/srv/\xD0\x96");
  EXPECT_EQ(HostPathBytes(u"\\usr\\back\xDC5Cslash\\\xDCFF.txt"), "/usr/back\\slash/\xFF.txt");
  EXPECT_EQ(HostPathBytes(u"R:\\not mapped"), "R:/not mapped");
}

TEST(PosixFiles, TheWholeHostMayBeADrive) {
  const MappedDrive drive(u'Q', u"\\");
  EXPECT_EQ(HostPathBytes(u"Q:\\"), "/");
  EXPECT_EQ(HostPathBytes(u"Q:\\usr\\lib"), "/usr/lib");
  EXPECT_TRUE(IsExistingFolder(u"Q:\\usr"));
}

TEST(PosixFiles, ADriveThatIsNotMappedHoldsNothing) {
  EXPECT_FALSE(IsExistingFolder(u"R:\\"));
  EXPECT_FALSE(MakeFolder(u"R:\\a"));
  EXPECT_FALSE(WriteFileBytes(u"R:\\a.txt", "x"));
  EXPECT_FALSE(IsExistingFolder(u"usr"));
}

}  // namespace
}  // namespace quilmark
