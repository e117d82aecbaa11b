// Searches in the Desktop scope, on a Desktop that the system really names.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/console.h"
#include "platform/drives.h"
#include "platform/files.h"
#include "platform/known_folders.h"
#include "search/results/search_pipeline.h"
#include "support/environment.h"
#include "support/scratch_folder.h"
#include "support/search_harness.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

// On a POSIX host the Desktop is what the file user-dirs.dirs names: here a folder of the test's own, as
// drive C:. Windows always has one.
class DesktopScope : public testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(folder.HostPath() / "user-dirs.dirs")
        << "XDG_DESKTOP_DIR=\"" << folder.HostPath().generic_string() << "/me/Desktop\"\n";
    std::filesystem::create_directories(folder.HostPath() / "me" / "Desktop");
    if (!HasSystemDrives()) MapDrive(u'C', folder.Path());
    const auto desktop = DesktopFolder();
    ASSERT_TRUE(desktop.has_value());
    AddVolumeWithDesktop(*desktop);
    TheSearch().scope.scopeIndex = kScopeDesktop;
  }
  void TearDown() override { UnmapDrive(u'C'); }

  // A volume that holds the folders of `path`, a file in the Desktop, one deeper, and two beside it.
  void AddVolumeWithDesktop(const std::u16string& path) {
    auto volume = MakeTestVolume(path.substr(0, 2));
    uint64_t parent = kRootFrnOfTests;
    for (size_t start = 3; start < path.size();) {
      const size_t end = std::min(path.find(u'\\', start), path.size());
      if (end == path.size()) AddFile(*volume, u"beside.txt", parent);
      parent = volume->records[AddFolder(*volume, path.substr(start, end - start), parent)].frn;
      start = end + 1;
    }
    AddFile(*volume, u"shown.txt", parent);
    AddFolder(*volume, u"sub", parent, 9'000);
    AddFile(*volume, u"deep.txt", 9'000);
    AddFile(*volume, u"rootfile.txt");
    AddVolume(Engine(), std::move(volume));
  }
  std::vector<std::u16string> Names() {
    harness.KindsUntilFinal();
    std::vector<std::u16string> names;
    for (const MatchItem& hit : *HeldResults())
      names.emplace_back(NameOf(hit.volume->records[hit.index]));
    return names;
  }
  ScratchFolder folder;
  ScopedEnvironment config{"XDG_CONFIG_HOME", folder.HostPath().string()};
  SearchHarness harness;
};

using Texts = std::vector<std::u16string>;

TEST_F(DesktopScope, NameSearchFindsWhatLiesBelowTheDesktop) {
  DoSearchAsync(u".txt", false, false);
  EXPECT_EQ(Names(), (Texts{u"shown.txt", u"deep.txt"}));
}

TEST_F(DesktopScope, EmptyTextListsTheWholeSubtreeAndTheDesktopItself) {
  DoSearchAsync(u"", false, false);
  EXPECT_EQ(Names(), (Texts{u"Desktop", u"shown.txt", u"sub", u"deep.txt"}));
  EXPECT_TRUE(TheSearch().SuppressRecentView);
}

TEST_F(DesktopScope, FolderQueryOutsideTheDesktopFindsNothing) {
  const std::u16string desktop = *DesktopFolder();
  DoSearchAsync(desktop.substr(0, desktop.rfind(u'\\')), false, false);
  EXPECT_EQ(Names(), Texts{});
}

TEST_F(DesktopScope, FolderQueryForTheDesktopListsIt) {
  DoSearchAsync(*DesktopFolder(), false, false);
  EXPECT_EQ(Names(), (Texts{u"shown.txt", u"sub"}));
}

#ifndef _WIN32

TEST_F(DesktopScope, WithoutADesktopEverySearchIsEmpty) {
  std::ofstream(folder.HostPath() / "user-dirs.dirs") << "";
  DoSearchAsync(u".txt", false, false);
  EXPECT_EQ(Names(), Texts{});
  DoSearchAsync(u"", false, false);
  EXPECT_EQ(Names(), Texts{});
}

#endif

}  // namespace
}  // namespace quilmark
