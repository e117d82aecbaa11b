#include "platform/file_rewrite.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(FileRewrite, AFileIsOpenedWithItsContents) {
  ScratchFolder folder;
  folder.MakeFile("file", "contents");
  const auto file = OpenForRewrite(folder.PathOf(u"file"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->sizeBytes, 8u);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"file")), "contents");
}

TEST(FileRewrite, AFileThatIsNotThereIsMadeAndAFolderIsNone) {
  ScratchFolder folder;
  const auto file = OpenForRewrite(folder.PathOf(u"new"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->sizeBytes, 0u);
  EXPECT_EQ(OpenForRewrite(folder.Path()), nullptr);
  EXPECT_EQ(OpenForRewrite(folder.PathOf(u"missing\\file")), nullptr);
}

TEST(FileRewrite, WritesAtItsPlaceAndCutsToLength) {
  ScratchFolder folder;
  folder.MakeFile("file", "0123456789");
  {
    const auto file = OpenForRewrite(folder.PathOf(u"file"));
    ASSERT_NE(file, nullptr);
    EXPECT_TRUE(file->WriteAt(8, "abcd"));
    EXPECT_TRUE(file->WriteAt(0, "xy"));
    EXPECT_TRUE(file->Cut(11));
    EXPECT_TRUE(file->Flush());
  }
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"file")), "xy234567abc");
}

TEST(FileRewrite, AShorterTextLeavesNothingOfTheFormerOne) {
  ScratchFolder folder;
  for (const std::string_view text : {"first text", "second", "", "the third and longest"}) {
    EXPECT_TRUE(WriteFileBytes(folder.PathOf(u"file"), text));
    EXPECT_EQ(ReadFileBytes(folder.PathOf(u"file")), text);
    EXPECT_TRUE(WriteMarkedFileBytes(folder.PathOf(u"marked"), "mark" + std::string(text), 4));
    EXPECT_EQ(ReadFileBytes(folder.PathOf(u"marked")), "mark" + std::string(text));
  }
}

}  // namespace
}  // namespace quilmark
