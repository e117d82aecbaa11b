#include "shell/win32/system/run_tool.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "platform/text_file.h"
#include "platform/win32/wide.h"
#include "support/environment.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

std::u16string StandIn() {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(nullptr, path, MAX_PATH);
  return std::u16string(
      FromWide((std::filesystem::path(path).parent_path() / "stand-in-tool.exe").wstring().c_str()));
}

class RunToolTest : public testing::Test {
 protected:
  std::u16string Log() { return ReadTextFile(folder.PathOf(u"log")).value_or(u""); }

  ScratchFolder folder;
  ScopedEnvironment log{"QUILMARK_TEST_TOOL_LOG", (folder.HostPath() / "log").string()};
};

TEST_F(RunToolTest, TheToolGetsTheArgumentsAsTheyAre) {
  const std::vector<std::u16string> arguments = {
      u"/Query", u"a b", u"\"C:\\Program Files\\Q.exe\" -hidden", u"C:\\a b\\", u"x\\\"y", u"C:\\文\\"};
  const ToolRun run = RunTool(StandIn(), arguments, 60'000);
  EXPECT_TRUE(run.hasRun);
  EXPECT_EQ(run.exitCode, 1u) << "there is no task";
  std::u16string wanted;
  for (const std::u16string& argument : arguments) wanted += argument + u"\n";
  EXPECT_EQ(Log(), wanted);
}

TEST_F(RunToolTest, GivesItsExitCode) {
  const ScopedEnvironment exit("QUILMARK_TEST_TOOL_EXIT", "7");
  const ToolRun run = RunTool(StandIn(), {}, 60'000);
  EXPECT_TRUE(run.hasRun);
  EXPECT_EQ(run.exitCode, 7u);
}

TEST_F(RunToolTest, EndsOneThatTakesTooLong) {
  const ScopedEnvironment exit("QUILMARK_TEST_TOOL_EXIT", "never");
  const ToolRun run = RunTool(StandIn(), {}, 1);
  EXPECT_FALSE(run.hasRun);
  EXPECT_EQ(run.exitCode, 258u);
}

TEST_F(RunToolTest, SaysWhyOneDoesNotStart) {
  const ToolRun run = RunTool(folder.PathOf(u"missing.exe"), {}, 1);
  EXPECT_FALSE(run.hasRun);
  EXPECT_EQ(run.exitCode, 2u);
}

TEST(SystemToolPath, LeadsIntoTheSystemsFolder) {
  EXPECT_TRUE(SystemToolPath(u"schtasks.exe").ends_with(u"\\system32\\schtasks.exe"));
}

}  // namespace
}  // namespace quilmark
