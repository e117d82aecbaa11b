// More folders than there are drive letters.
#include <gmock/gmock.h>

#include <filesystem>

#include "support/run_program.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

using testing::HasSubstr;

struct SharedDrive : testing::Test {
  std::string Path(const std::string& name) const { return Utf8(folder.HostPath() / name); }
  // `find QUERY` in many folders and in `more`.
  ProgramRun Find(const std::string& query, const std::vector<std::string>& more) {
    std::vector<std::string> arguments = {"find", query};
    for (int i = 0; i < 30; ++i) {
      const std::string name = "folder" + std::to_string(i);
      folder.MakeFile(name + "/needle" + std::to_string(i) + ".txt");
      arguments.push_back(Path(name));
    }
    arguments.insert(arguments.end(), more.begin(), more.end());
    return RunProgram(QUILMARK_PROGRAM, arguments);
  }
  ScratchFolder folder;
};

TEST_F(SharedDrive, AllFoldersAreSearched) {
  folder.MakeFile("folder29/deeper/needle.txt");
  folder.MakeFile("elsewhere/needle.txt");
  const ProgramRun run = Find("needle", {});
  EXPECT_EQ(run.exitCode, 0) << run.errors;
  const auto lines = Lines(run.output);
  EXPECT_EQ(lines.size(), 31u);
  for (int i = 0; i < 30; ++i) {
    const std::string name = "folder" + std::to_string(i) + "/needle" + std::to_string(i) + ".txt";
    EXPECT_THAT(lines, testing::Contains(Path(name)));
  }
  EXPECT_THAT(lines, testing::Contains(Path("folder29/deeper/needle.txt")));
}

TEST_F(SharedDrive, NeitherTheFoldersNorTheWayToThemAreHits) {
  const ProgramRun run = Find("folder", {});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.exitCode, 1) << run.errors;
}

TEST_F(SharedDrive, AFolderMayBeALink) {
  folder.MakeFile("target/needle.txt");
  std::filesystem::create_directory_symlink("target", folder.HostPath() / "link");
  const ProgramRun run = Find("needle", {Path("link")});
  EXPECT_THAT(Lines(run.output), testing::Contains(Path("link/needle.txt")));
}

TEST_F(SharedDrive, WhatIsMissingIsTold) {
  const ProgramRun run = Find("needle", {Path("none")});
  EXPECT_THAT(run.errors, HasSubstr("none' does not exist"));
  EXPECT_EQ(run.exitCode, 2);
}

}  // namespace
}  // namespace quilmark
