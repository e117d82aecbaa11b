#include "search/results/search_scope.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

#include "platform/known_folders.h"
#include "support/environment.h"
#include "support/scratch_folder.h"
#include "support/volumes.h"

namespace quilmark {
namespace {

class Scope : public testing::Test {
 protected:
  Scope() {
    for (const char16_t* const drive : {u"C:", u"D:", u"E:"}) owned.push_back(MakeTestVolume(drive));
    for (const auto& volume : owned) all.push_back(volume.get());
  }
  std::vector<VolumeIndex*> Of(const ScopeChoice& choice) const {
    return VolumesInScope(all, ResolveScope(choice));
  }
  std::vector<std::unique_ptr<VolumeIndex>> owned;
  std::vector<VolumeIndex*> all;
};

TEST_F(Scope, OfAllHasEveryVolumeInOrder) { EXPECT_EQ(Of({}), all); }

TEST_F(Scope, OfADriveIsTheOneWithItsLetterWhereverItStandsByNow) {
  EXPECT_EQ(Of({.scopeIndex = kScopeFirstVolume, .scopeDrive = u'E'}), (std::vector{all[2]}));
  EXPECT_EQ(Of({.scopeIndex = kScopeFirstVolume, .scopeDrive = u'X'}), (std::vector<VolumeIndex*>()));
}

TEST_F(Scope, OfADriveWithoutALetterIsThatAtItsPosition) {
  EXPECT_EQ(Of({.scopeIndex = kScopeFirstVolume + 1}), (std::vector{all[1]}));
  EXPECT_EQ(Of({.scopeIndex = kScopeFirstVolume + 3}), (std::vector<VolumeIndex*>()));
}

// On a POSIX host the file user-dirs.dirs names the Desktop. Windows always has one.
TEST_F(Scope, OfTheDesktopHasItsFolderAndEveryVolume) {
  const ScratchFolder config;
  config.MakeFile("user-dirs.dirs", "XDG_DESKTOP_DIR=\"/srv/desk\"\n");
  const ScopedEnvironment home("HOME", config.HostPath().string());
  const ScopedEnvironment variable("XDG_CONFIG_HOME", config.HostPath().string());
  ASSERT_TRUE(DesktopFolder().has_value());
  const SearchScope scope = ResolveScope({.scopeIndex = kScopeDesktop});
  EXPECT_TRUE(scope.desktopOnly);
  EXPECT_EQ(scope.desktop, DesktopFolder());
  EXPECT_EQ(VolumesInScope(all, scope), all);
  EXPECT_FALSE(ResolveScope({}).desktopOnly);
}

}  // namespace
}  // namespace quilmark
