#include "platform/files.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "platform/clock.h"
#include "platform/file_facts.h"
#include "platform/format.h"
#include "platform/known_folders.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/guarded_write.h"
#include "platform/win32/wide.h"
#include "support/host_link.h"
#include "support/listing.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"
#include "support/system_faults.h"

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

TEST(Win32Files, AFileThatLetsNobodyAskIsToldOfByItsFolder) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "seven b");
  folder.MakeFolder("sub");
  const auto file = ReadFileFacts(folder.PathOf(u"a.txt"));
  ASSERT_TRUE(file.has_value());
  for (const char16_t* const name : {u"a.txt", u"sub"}) {
    const auto open = ReadFileFacts(folder.PathOf(name));
    SystemFaults faults(FaultKind::kOnce, 1);  // in use by another program
    const auto closed = ReadFileFacts(folder.PathOf(name));
    ASSERT_TRUE(faults.HasFailed());
    ASSERT_TRUE(closed.has_value());
    EXPECT_EQ(closed->size, open->size);
    EXPECT_EQ(closed->modified, open->modified);
    EXPECT_EQ(closed->created, open->created);
    EXPECT_EQ(closed->isDirectory, open->isDirectory);
    EXPECT_EQ(faults.OpenFiles(), 0);
  }
  EXPECT_EQ(file->size, 7u);
}

TEST(Win32Files, LinksLeadToAnotherNameAndOtherReparsePointsDoNot) {
  constexpr DWORD kLink = FILE_ATTRIBUTE_REPARSE_POINT | FILE_ATTRIBUTE_DIRECTORY;
  constexpr DWORD kCloudContent = 0x9000'001A;
  EXPECT_TRUE(IsNameSurrogate(kLink, IO_REPARSE_TAG_MOUNT_POINT));
  EXPECT_TRUE(IsNameSurrogate(FILE_ATTRIBUTE_REPARSE_POINT, IO_REPARSE_TAG_SYMLINK));
  EXPECT_FALSE(IsNameSurrogate(kLink, kCloudContent));
  EXPECT_FALSE(IsNameSurrogate(FILE_ATTRIBUTE_REPARSE_POINT, IO_REPARSE_TAG_DEDUP));
  EXPECT_FALSE(IsNameSurrogate(FILE_ATTRIBUTE_DIRECTORY, IO_REPARSE_TAG_MOUNT_POINT));
}

TEST(Win32Files, AFolderOnTheWayIsAskedWhetherItIsALink) {
  const auto temp = TempFolder();
  ASSERT_TRUE(temp.has_value());
  const auto asked = [&](const std::u16string& name) {
    SystemFaults faults(FaultKind::kOnce);
    EXPECT_FALSE(IsReachedByLink(*temp + name));
    return faults.Calls().size();
  };
  EXPECT_EQ(asked(u"file"), 0u) << "the way to the temporary folder is the user's own";
  EXPECT_GT(asked(u"outer\\inner\\file"), asked(u"outer\\file"));
}

// Wine shows the link as a folder, as it looks to who asks before it is swapped in.
TEST(Win32Files, NothingIsWrittenToWhatTurnsOutToLieElsewhere) {
  const std::u16string folder = FolderWithLink(u"quilmark-test-writes");
  const std::u16string behind = folder + u"\\behind\\a.txt", byLink = folder + u"\\link\\a.txt";
  ASSERT_TRUE(WriteFileBytes(behind, "as it was"));
  ASSERT_FALSE(IsReachedByLink(byLink));
  ASSERT_EQ(ReadFileBytes(byLink), "as it was");
  EXPECT_FALSE(AppendFileBytes(byLink, "line", "mark"));
  EXPECT_FALSE(WriteFileBytes(byLink, "new"));
  EXPECT_FALSE(WriteMarkedFileBytes(byLink, "new", 1));
  EXPECT_EQ(ReadFileBytes(behind), "as it was");
}

TEST(Win32Files, NothingIsOpenedOrMadeBelowAJunction) {
  const std::u16string folder = FolderWithLink(u"quilmark-test-writes");
  // The folder stays, and with it what a run has made that failed.
  const std::u16string file = FormatText(u"\\%llu.txt", TickMs()),
                       made = FormatText(u"\\%llu", TickMs());
  const LinksAsJunctions junctions;
  EXPECT_TRUE(IsReachedByLink(folder + u"\\link" + file));
  EXPECT_FALSE(IsReachedByLink(folder + u"\\behind" + file));
  EXPECT_FALSE(AppendFileBytes(folder + u"\\link" + file, "line", ""));
  EXPECT_FALSE(IsExistingPath(folder + u"\\behind" + file));
  EXPECT_FALSE(MakeFolder(folder + u"\\link" + made));
  EXPECT_FALSE(IsExistingPath(folder + u"\\behind" + made));
}

TEST(Win32Files, AFileThatIsALinkIsNotWrittenAndOneOfACloudIs) {
  const ScratchFolder scratch;
  const std::u16string path = scratch.PathOf(u"a.txt");
  ASSERT_TRUE(WriteFileBytes(path, "as it was"));
  {
    const FilesTagged links(IO_REPARSE_TAG_SYMLINK);
    EXPECT_FALSE(WriteFileBytes(path, "new"));
    EXPECT_FALSE(AppendFileBytes(path, "line", ""));
  }
  EXPECT_EQ(ReadFileBytes(path), "as it was");
  const FilesTagged cloud(0x9000'001A);
  EXPECT_TRUE(WriteFileBytes(path, "new"));
  EXPECT_TRUE(AppendFileBytes(path, " line", ""));
  EXPECT_EQ(ReadFileBytes(path), "new line");
}

TEST(Win32Files, AFileBelowASharedFolderIsWrittenByAnySpellingOfItsName) {
  const ScratchFolder scratch;
  std::u16string path = scratch.PathOf(u"sub\\a.txt");
  scratch.MakeFolder("sub");
  EXPECT_TRUE(AppendFileBytes(path, "1", ""));
  EXPECT_TRUE(AppendFileBytes(scratch.PathOf(u"SUB\\A.TXT"), "2", ""));
  EXPECT_TRUE(AppendFileBytes(scratch.PathOf(u"sub/a.txt"), "3", ""));
  const MappedDrive drive(u'Q', scratch.Path());
  EXPECT_TRUE(AppendFileBytes(u"Q:\\sub\\a.txt", "4", ""));
  EXPECT_EQ(ReadFileBytes(path), "1234");
}

}  // namespace
}  // namespace quilmark
