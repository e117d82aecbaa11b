#include "platform/known_folders.h"

#include <gtest/gtest.h>

#include "platform/files.h"
#include "support/documents_at.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(Win32KnownFolders, TheSystemNamesTheUsersFolders) {
  for (const auto& folder : {DocumentsFolder(), LocalDataFolder(), DesktopFolder()}) {
    ASSERT_TRUE(folder.has_value());
    EXPECT_TRUE(IsExistingFolder(*folder));
    EXPECT_FALSE(folder->ends_with(u'\\'));
  }
}

TEST(Win32KnownFolders, ALetterMappedElsewhereHidesNoKnownFolder) {
  const std::u16string documents = DocumentsFolder().value(), temp = TempFolder().value();
  const ScratchFolder elsewhere;
  const MappedDrive drive(documents[0], elsewhere.Path());
  EXPECT_EQ(DocumentsFolder(), u"\\\\?\\" + documents);
  EXPECT_TRUE(IsExistingFolder(DocumentsFolder().value()));
  EXPECT_FALSE(IsExistingFolder(documents));
  EXPECT_EQ(TempFolder(), u"\\\\?\\" + temp);
}

TEST(Win32KnownFolders, ADesktopBelowAMappedDriveIsOnThatDrive) {
  const std::u16string desktop = DesktopFolder().value();
  const size_t lastName = desktop.rfind(u'\\');
  const MappedDrive drive(u'Q', desktop.substr(0, lastName));
  EXPECT_EQ(DesktopFolder(), u"Q:" + desktop.substr(lastName));
}

TEST(Win32KnownFolders, TheDocumentsAreAskedForOnceAndAgainAfterAWriteThatFails) {
  const ScratchFolder scratch;
  const std::u16string before = scratch.PathOf(u"before"), after = scratch.PathOf(u"after");
  DocumentsAt documents(before);
  EXPECT_EQ(DocumentsFolder(), before);
  documents.Move(after);
  EXPECT_EQ(DocumentsFolder(), before);
  EXPECT_FALSE(AppendFileBytes(before + u"\\a.txt", "line", ""));
  EXPECT_EQ(DocumentsFolder(), after);
  documents.Move(before);
  EXPECT_FALSE(MakeFolder(after + u"\\a\\b"));
  EXPECT_EQ(DocumentsFolder(), before);
  documents.Move(after);
  EXPECT_FALSE(WriteFileBytes(before + u"\\a.txt", "line"));
  EXPECT_EQ(DocumentsFolder(), after);
}

}  // namespace
}  // namespace quilmark
