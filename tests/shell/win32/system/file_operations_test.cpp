#include "shell/win32/system/file_operations.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

// Plain files of a folder of its own: Wine's deletion would follow a link of the host out of it.
class FileOperations : public testing::Test {
 protected:
  std::u16string Make(const char* name) {
    folder_.MakeFile(name, "x");
    const std::string bytes(name);
    return folder_.PathOf(std::u16string(bytes.begin(), bytes.end()));
  }
  static DWORD AttributesOf(const std::u16string& path) {
    return GetFileAttributesW(Wide(LongPathOf(path)));
  }
  static void SetAttributes(const std::u16string& path, DWORD attributes) {
    ASSERT_TRUE(SetFileAttributesW(Wide(LongPathOf(path)), attributes));
  }

  ScratchFolder folder_;
};

TEST_F(FileOperations, DeleteDirectlyWhateverTheAttributes) {
  const std::u16string path = Make("a.txt");
  SetAttributes(path, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM);
  EXPECT_TRUE(DeleteByFileCalls(path));
  EXPECT_TRUE(IsMissingPath(path));
  EXPECT_FALSE(DeleteByFileCalls(path)) << "once more";
}

TEST_F(FileOperations, DeleteAnEmptyFolderDirectlyAndNoOther) {
  Make("dir/a.txt");
  const std::u16string dir = folder_.PathOf(u"dir"), file = dir + u"\\a.txt";
  EXPECT_FALSE(DeleteByFileCalls(dir));
  EXPECT_TRUE(IsExistingPath(file));
  EXPECT_TRUE(DeleteByFileCalls(file));
  EXPECT_TRUE(DeleteByFileCalls(dir));
  EXPECT_TRUE(IsMissingPath(dir));
}

TEST_F(FileOperations, LeaveAnOpenFileAsItIs) {
  const std::u16string path = Make("a.txt");
  SetAttributes(path, FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
  {
    const UniqueFile open(CreateFileW(Wide(LongPathOf(path)), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(open);
    EXPECT_FALSE(DeleteByFileCalls(path));
  }
  EXPECT_EQ(AttributesOf(path), static_cast<DWORD>(FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE));
  EXPECT_TRUE(DeleteByFileCalls(path));
}

TEST_F(FileOperations, DeleteDirectlyBeyondTheOldLimitOfPaths) {
  std::u16string path = folder_.Path();
  for (int i = 0; i < 3; ++i) {
    path += u"\\" + std::u16string(120, u'd');
    ASSERT_TRUE(MakeFolder(path));
  }
  path += u"\\a.txt";
  ASSERT_TRUE(UniqueFile(CreateFileW(Wide(LongPathOf(path)), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                     FILE_ATTRIBUTE_NORMAL, nullptr)));
  EXPECT_TRUE(DeleteByFileCalls(path));
  EXPECT_TRUE(IsMissingPath(path));
}

TEST_F(FileOperations, DeleteByTheShell) {
  const std::u16string file = Make("a.txt"), inFolder = Make("dir/sub/b.txt"), kept = Make("kept.txt");
  EXPECT_TRUE(DeleteByShellCall(nullptr, file, Undo::kNo));
  EXPECT_TRUE(IsMissingPath(file));
  EXPECT_TRUE(DeleteByShellCall(nullptr, folder_.PathOf(u"dir"), Undo::kNo));
  EXPECT_TRUE(IsMissingPath(inFolder));
  EXPECT_FALSE(DeleteByShellCall(nullptr, file, Undo::kNo)) << "once more";
  EXPECT_TRUE(IsExistingPath(kept));
}

// Not every system knows this way: what matters is that the answer is true.
TEST_F(FileOperations, SayWhetherAnOperationHasDeleted) {
  const std::u16string path = Make("a.txt");
  EXPECT_EQ(DeleteByFileOperation(path, Undo::kNo), IsMissingPath(path));
  EXPECT_FALSE(DeleteByFileOperation(folder_.PathOf(u"nothing"), Undo::kNo));
}

}  // namespace
}  // namespace quilmark
