#include "platform/files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "support/listing.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(Win32Files, APathTakesTheFormWithoutALimit) {
  const MappedDrive drive(u'Q', u"R:\\root");
  EXPECT_EQ(LongPathOf(u"C:"), u"\\\\?\\C:\\");
  EXPECT_EQ(LongPathOf(u"C:\\a\\b"), u"\\\\?\\C:\\a\\b");
  EXPECT_EQ(LongPathOf(u"C:\\a/b"), u"\\\\?\\C:\\a\\b");
  EXPECT_EQ(LongPathOf(u"Q:\\a"), u"\\\\?\\R:\\root\\a");
  EXPECT_EQ(LongPathOf(u"\\\\server\\share\\a"), u"\\\\?\\UNC\\server\\share\\a");
}

TEST(Win32Files, APathInASystemsFormStaysAsItIs) {
  const MappedDrive drive(u'Q', u"R:\\root");
  for (const char16_t* path : {u"\\\\?\\Q:\\a", u"\\\\.\\Q:", u"relative\\a", u""}) {
    EXPECT_EQ(LongPathOf(path), path);
  }
  EXPECT_EQ(LongPathOf(std::u16string(u"C:\\a\0b", 6)), u"");
}

TEST(Win32Files, AHiddenFileIsRewritten) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "a longer text");
  const std::u16string path = folder.PathOf(u"a.txt");
  ASSERT_TRUE(SetFileAttributesW(Wide(path), FILE_ATTRIBUTE_HIDDEN));
  EXPECT_TRUE(WriteFileBytes(path, "new"));
  EXPECT_TRUE(AppendFileBytes(path, "er", ""));
  EXPECT_EQ(ReadFileBytes(path), "newer");
}

TEST(Win32Files, AFileThatAnotherProgramWritesIsRead) {
  const ScratchFolder folder;
  folder.MakeFile("a.log", "first line");
  const UniqueFile writer = OpenPath(folder.PathOf(u"a.log"), GENERIC_WRITE, OPEN_EXISTING);
  ASSERT_TRUE(writer);
  EXPECT_EQ(ReadFileBytes(folder.PathOf(u"a.log")), "first line");
}

TEST(Win32Files, NamesOfHiddenAndSystemFilesAreListed) {
  const ScratchFolder folder;
  folder.MakeFile("hidden.sys", "x");
  ASSERT_TRUE(SetFileAttributesW(Wide(folder.PathOf(u"hidden.sys")),
                                 FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM));
  EXPECT_EQ(EntriesIn(folder.Path()), (EntrySet{{u"hidden.sys", EntryKind::kFile}}));
}

TEST(Win32Files, ATypedPathIsTakenByTheRulesOfWindows) {
  EXPECT_EQ(PathFromHost("C:\\"), u"C:\\");
  EXPECT_EQ(PathFromHost("C:/Windows/./x/../system32/"), u"C:\\Windows\\system32");
  EXPECT_EQ(PathFromHost("\\\\server\\share\\a"), u"\\\\server\\share\\a");
  const std::string longName(300, 'n');
  EXPECT_EQ(PathFromHost("C:\\" + longName + "\\a"), u"C:\\" + std::u16string(300, u'n') + u"\\a");
}

TEST(Win32Files, APathIsPrintedInUtf8WithItsDriveResolved) {
  const MappedDrive drive(u'Q', u"R:\\\u0416");
  EXPECT_EQ(HostPathBytes(u"Q:\\a.txt"), "R:\\\xD0\x96\\a.txt");
  EXPECT_EQ(HostPathBytes(u"C:\\a.txt"), "C:\\a.txt");
}

}  // namespace
}  // namespace quilmark
