#include "cli/drive_plan.h"

#include <gtest/gtest.h>

#include "platform/console.h"

namespace quilmark {
namespace {

std::string Letters(const DrivePlan& plan) {
  std::string letters;
  for (const PlannedDrive& drive : plan.drives) letters.push_back(static_cast<char>(drive.letter));
  return letters;
}

TEST(DrivePlan, FoldersGetLettersFromCOn) {
  const DrivePlan plan = PlanDrives({.paths = {"/a", "/b"}});
  EXPECT_EQ(plan.error, "");
  EXPECT_EQ(Letters(plan), "CD");
  EXPECT_EQ(plan.drives[1].typed, "/b");
}

TEST(DrivePlan, LettersGivenByHandAreLeftOutOfTheRow) {
  const DrivePlan plan = PlanDrives({.paths = {"/a", "/b"}, .drives = {"d=/x", "C=/y"}});
  EXPECT_EQ(Letters(plan), "DCEF");
  EXPECT_EQ(plan.drives[0].typed, "/x");
}

TEST(DrivePlan, MalformedDriveIsAnError) {
  for (const char* const text : {"D", "D=", "=/x", "1=/x", "DD=/x", "D:/x", ""}) {
    EXPECT_NE(PlanDrives({.drives = {text}}).error, "") << text;
  }
}

TEST(DrivePlan, LetterGivenTwiceIsAnError) {
  EXPECT_NE(PlanDrives({.drives = {"D=/x", "d=/y"}}).error.find("twice"), std::string::npos);
}

TEST(DrivePlan, FoldersBeyondTheLettersShareTheLastOneWhereAllHaveOneRoot) {
  const DrivePlan most = PlanDrives({.paths = std::vector<std::string>(24, "/a")});
  EXPECT_EQ(most.error, "");
  EXPECT_TRUE(most.drives.back().shared.empty());

  std::vector<std::string> paths(24, "/a");
  paths.insert(paths.end(), {"/b", "/c"});
  const DrivePlan more = PlanDrives({.paths = paths});
  EXPECT_EQ(more.error.empty(), !HasSystemDrives());
  if (HasSystemDrives()) return;
  EXPECT_EQ(Letters(more), "CDEFGHIJKLMNOPQRSTUVWXYZ");
  EXPECT_EQ(more.drives.back().shared, (std::vector<std::string>{"/a", "/b", "/c"}));
  EXPECT_EQ(more.drives[22].typed, "/a");
  EXPECT_TRUE(more.drives[22].shared.empty());
}

TEST(DrivePlan, EmptyNameOfAFolderIsAnError) {
  EXPECT_NE(PlanDrives({.paths = {"/a", ""}}).error.find("empty"), std::string::npos);
}

TEST(DrivePlan, ScopeIsAllOrTheDesktopOrADriveOfTheRun) {
  for (const char* const scope : {"all", "desktop", "C:", "d:"}) {
    EXPECT_EQ(PlanDrives({.paths = {"/a", "/b"}, .scope = scope}).error, "") << scope;
  }
  for (const char* const scope : {"E:", "C", "C:\\", "", "here"}) {
    EXPECT_NE(PlanDrives({.paths = {"/a", "/b"}, .scope = scope}).error.find("--scope takes"),
              std::string::npos)
        << scope;
  }
}

TEST(DrivePlan, NoFolderIsAnErrorWhereTheSystemHasNoDrives) {
  EXPECT_EQ(PlanDrives({}).error.empty(), HasSystemDrives());
}

}  // namespace
}  // namespace quilmark
