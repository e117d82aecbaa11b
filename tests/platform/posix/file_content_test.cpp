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

TEST(FileContentOnPosix, OfAPipeIsNotWaitedFor) {
  const ScratchFolder folder;
  ASSERT_EQ(mkfifo((folder.HostPath() / "pipe").c_str(), 0600), 0);
  const auto content = MakeFileContent();
  ASSERT_EQ(content->Open(folder.PathOf(u"pipe")), ContentOpening::kOpened);
  std::array<char, 10> buffer;
  EXPECT_EQ(content->Read(buffer), 0u);
  EXPECT_FALSE(content->Size().has_value());
}

TEST(FileContentOnPosix, OfADeviceWithoutEndHasNoSize) {
  const auto content = MakeFileContent();
  ASSERT_EQ(content->Open(u"\\dev\\zero"), ContentOpening::kOpened);
  EXPECT_FALSE(content->Size().has_value());
}

}  // namespace
}  // namespace quilmark
