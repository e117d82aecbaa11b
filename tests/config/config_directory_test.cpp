#include "config/config_directory.h"

#include <gtest/gtest.h>

#include "config/scratch_config.h"
#include "platform/files.h"

namespace quilmark {
namespace {

using Folders = std::vector<std::u16string>;

TEST(ChooseConfigDirectory, TakesTheDocumentsFirst) {
  const auto choice = ChooseConfigDirectory({.documents = u"D:\\Papers",
                                             .localData = u"C:\\Users\\me\\AppData\\Local",
                                             .temp = u"C:\\Temp\\"});
  EXPECT_EQ(choice.path, u"D:\\Papers\\Quilmark\\config");
  EXPECT_EQ(choice.foldersToMake, (Folders{u"D:\\Papers\\Quilmark", u"D:\\Papers\\Quilmark\\config"}));
}

TEST(ChooseConfigDirectory, TakesTheLocalDataWhereNoDocumentsAreNamed) {
  const auto choice = ChooseConfigDirectory({.localData = u"C:\\Local", .temp = u"C:\\Temp\\"});
  EXPECT_EQ(choice.path, u"C:\\Local\\Quilmark\\config");
  EXPECT_EQ(choice.foldersToMake, (Folders{u"C:\\Local\\Quilmark", u"C:\\Local\\Quilmark\\config"}));
}

TEST(ChooseConfigDirectory, AddsNoBackslashToTheTemporaryFolder) {
  const auto choice = ChooseConfigDirectory({.temp = u"C:\\Temp\\"});
  EXPECT_EQ(choice.path, u"C:\\Temp\\Quilmark\\config");
  EXPECT_EQ(choice.foldersToMake, (Folders{u"C:\\Temp\\Quilmark", u"C:\\Temp\\Quilmark\\config"}));
}

TEST(ChooseConfigDirectory, EndsAtAFixedPathThatItDoesNotMake) {
  const auto choice = ChooseConfigDirectory({});
  EXPECT_EQ(choice.path, u"C:\\Quilmark\\config");
  EXPECT_EQ(choice.foldersToMake, Folders{});
}

TEST(ChooseConfigDirectory, PrefersWhatTheUserChose) {
  const auto choice =
      ChooseConfigDirectory({.chosen = u"\\srv\\settings\\", .documents = u"D:\\Papers"});
  EXPECT_EQ(choice.path, u"\\srv\\settings");
  EXPECT_EQ(choice.foldersToMake, Folders{u"\\srv\\settings"});
}

TEST(GetConfigDirectory, KeepsADocumentsFolderThatDoesNotExist) {
  const ScratchFolder scratch;
  const std::u16string missing = scratch.PathOf(u"moved away");
  EXPECT_EQ(ChooseConfigDirectory({.documents = missing, .localData = scratch.Path()}).path,
            missing + u"\\Quilmark\\config");
}

TEST(GetConfigDirectory, IsTheOneOfTheEnvironmentAndIsMade) {
  const ScratchFolder scratch;
  const ScopedEnvironment chosen("QUILMARK_CONFIG_DIR", (scratch.HostPath() / "mine").string());
  EXPECT_EQ(GetConfigDirectory(), scratch.PathOf(u"mine"));
  EXPECT_TRUE(IsExistingFolder(scratch.PathOf(u"mine")));
}

TEST(GetConfigDirectory, IsAskedForAgainAtEachCall) {
  const ScratchFolder first, second;
  const ScopedEnvironment chosenFirst("QUILMARK_CONFIG_DIR", first.HostPath().string());
  EXPECT_EQ(GetConfigDirectory(), first.Path());
  const ScopedEnvironment chosenSecond("QUILMARK_CONFIG_DIR", second.HostPath().string());
  EXPECT_EQ(GetConfigDirectory(), second.Path());
}

TEST(AskConfigPlaces, TakesAnEmptyVariableForNone) {
  const ScopedEnvironment chosen("QUILMARK_CONFIG_DIR", "");
  EXPECT_EQ(AskConfigPlaces().chosen, std::nullopt);
}

TEST(GetConfigDirectory, StaysWithAPlaceThatCannotBeMade) {
  const ScratchFolder scratch;
  const ScopedEnvironment chosen("QUILMARK_CONFIG_DIR", (scratch.HostPath() / "no" / "such").string());
  EXPECT_EQ(GetConfigDirectory(), scratch.PathOf(u"no\\such"));
  EXPECT_FALSE(IsExistingFolder(scratch.PathOf(u"no\\such")));
}

}  // namespace
}  // namespace quilmark
