#include "platform/file_content.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <filesystem>

#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(FileContentOnPosix, RefusesALinkWhereItIsTold) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "text");
  std::filesystem::create_symlink("a.txt", folder.HostPath() / "link");
  EXPECT_EQ(MakeFileContent()->Open(folder.PathOf(u"link")), ContentOpening::kOpened);
  const auto content = MakeFileContent(LinksOfFiles::kRefused);
  EXPECT_EQ(content->Open(folder.PathOf(u"link")), ContentOpening::kLink);
  EXPECT_EQ(content->Open(folder.PathOf(u"a.txt")), ContentOpening::kOpened);
}

// What is read from a pipe is lost to its reader; opening a device may be what makes it act.
TEST(FileContentOnPosix, OfPipesDevicesAndFoldersIsNotRead) {
  const ScratchFolder folder;
  ASSERT_EQ(mkfifo((folder.HostPath() / "pipe").c_str(), 0600), 0);
  const auto content = MakeFileContent();
  for (const std::u16string& path :
       {folder.PathOf(u"pipe"), folder.Path(), std::u16string(u"\\dev\\zero")}) {
    EXPECT_EQ(content->Open(path), ContentOpening::kNoFile);
    EXPECT_FALSE(content->Size().has_value());
  }
}

}  // namespace
}  // namespace quilmark
