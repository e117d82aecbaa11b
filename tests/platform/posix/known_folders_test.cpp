#include "platform/known_folders.h"

#include <gtest/gtest.h>

#include "support/environment.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

// A home folder whose file of folders has these contents.
struct Home {
  explicit Home(std::string_view userDirs) { folder.MakeFile(".config/user-dirs.dirs", userDirs); }

  ScratchFolder folder;
  ScopedEnvironment home{"HOME", folder.HostPath().string()};
  ScopedEnvironment config{"XDG_CONFIG_HOME", std::nullopt};
};

TEST(PosixKnownFolders, FoldersBelowHomeAndElsewhereAreNamedByTheUsersFile) {
  const Home home("XDG_DOCUMENTS_DIR=\"$HOME/My Papers\"\nXDG_DESKTOP_DIR=\"/srv/desk\"\n");
  EXPECT_EQ(DocumentsFolder(), home.folder.PathOf(u"My Papers"));
  EXPECT_EQ(DesktopFolder(), u"\\srv\\desk");
}

TEST(PosixKnownFolders, AFolderThatTheFileDoesNotNameIsNone) {
  const Home home("XDG_DOCUMENTS_DIR=\"$HOME/\"\n");
  EXPECT_EQ(DocumentsFolder(), std::nullopt);
  EXPECT_EQ(DesktopFolder(), std::nullopt);
}

TEST(PosixKnownFolders, AHomeWithoutTheFileNamesNone) {
  const ScratchFolder folder;
  const ScopedEnvironment home("HOME", folder.HostPath().string()),
      config("XDG_CONFIG_HOME", std::nullopt);
  EXPECT_EQ(DocumentsFolder(), std::nullopt);
}

TEST(PosixKnownFolders, WithoutAHomeThereIsNone) {
  const Home home("XDG_DOCUMENTS_DIR=\"/srv/papers\"\n");
  const ScopedEnvironment gone("HOME", std::nullopt);
  EXPECT_EQ(DocumentsFolder(), std::nullopt);
}

TEST(PosixKnownFolders, TheFileLiesWhereTheConfigurationLies) {
  const Home home("XDG_DOCUMENTS_DIR=\"/not/this\"\n");
  const ScratchFolder config;
  config.MakeFile("user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/but/this\"\n");
  {
    const ScopedEnvironment absolute("XDG_CONFIG_HOME", config.HostPath().string());
    EXPECT_EQ(DocumentsFolder(), u"\\but\\this");
  }
  const ScopedEnvironment relative("XDG_CONFIG_HOME", "relative");
  EXPECT_EQ(DocumentsFolder(), u"\\not\\this");
}

TEST(PosixKnownFolders, EachCallLooksAgain) {
  const Home home("XDG_DOCUMENTS_DIR=\"/first\"\n");
  EXPECT_EQ(DocumentsFolder(), u"\\first");
  home.folder.MakeFile(".config/user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/second\"\n");
  EXPECT_EQ(DocumentsFolder(), u"\\second");
}

TEST(PosixKnownFolders, ADesktopBelowAMappedDriveIsOnThatDrive) {
  const Home home("XDG_DESKTOP_DIR=\"$HOME/Desktop\"\n");
  const MappedDrive drive(u'C', home.folder.Path());
  EXPECT_EQ(DesktopFolder(), u"C:\\Desktop");
}

TEST(PosixKnownFolders, LocalDataIsNamedByAnAbsolutePathOnly) {
  const ScopedEnvironment home("HOME", std::nullopt);
  const ScopedEnvironment absolute("XDG_DATA_HOME", "/home/me/data/");
  EXPECT_EQ(LocalDataFolder(), u"\\home\\me\\data");
  const ScopedEnvironment relative("XDG_DATA_HOME", "data");
  EXPECT_EQ(LocalDataFolder(), std::nullopt);
  const ScopedEnvironment none("XDG_DATA_HOME", std::nullopt);
  EXPECT_EQ(LocalDataFolder(), std::nullopt);
}

TEST(PosixKnownFolders, LocalDataThatNobodyNamesStandsInItsUsualPlaceWhereThatExists) {
  const Home home("");
  const ScopedEnvironment none("XDG_DATA_HOME", std::nullopt);
  EXPECT_EQ(LocalDataFolder(), std::nullopt);
  home.folder.MakeFile(".local/share/file", "");
  EXPECT_EQ(LocalDataFolder(), home.folder.PathOf(u".local\\share"));
}

TEST(PosixKnownFolders, TheTemporaryFolderEndsWithASeparator) {
  const ScopedEnvironment none("TMPDIR", std::nullopt);
  EXPECT_EQ(TempFolder(), u"\\tmp\\");
  const ScopedEnvironment named("TMPDIR", "/var/tmp//");
  EXPECT_EQ(TempFolder(), u"\\var\\tmp\\");
  const ScopedEnvironment relative("TMPDIR", "tmp");
  EXPECT_EQ(TempFolder(), u"\\tmp\\");
  const ScopedEnvironment root("TMPDIR", "/");
  EXPECT_EQ(TempFolder(), u"\\");
}

TEST(PosixKnownFolders, ATemporaryFolderHasFewerThan260Characters) {
  const ScopedEnvironment longest("TMPDIR", "/" + std::string(257, 't'));
  EXPECT_EQ(TempFolder()->size(), 259u);
  const ScopedEnvironment tooLong("TMPDIR", "/" + std::string(258, 't'));
  EXPECT_EQ(TempFolder(), std::nullopt);
}

}  // namespace
}  // namespace quilmark
