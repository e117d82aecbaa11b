#include "shell/actions/path_actions.h"

#include <gtest/gtest.h>

#include "shell/recording_shell.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;

TEST(ShowInFileManager, SelectsThePath) {
  RecordingShell shell;
  ShowInFileManager(shell, u"C:\\dir\\a.txt");
  EXPECT_EQ(shell.calls, Calls{"select C:\\dir\\a.txt"});
}

TEST(ShowInFileManager, OpensTheFolderWhereThatFails) {
  RecordingShell shell;
  shell.selects = false;
  ShowInFileManager(shell, u"C:\\dir\\a.txt");
  ShowInFileManager(shell, u"C:\\a.txt");
  ShowInFileManager(shell, u"C:\\");
  EXPECT_EQ(shell.calls, (Calls{"select C:\\dir\\a.txt", "open C:\\dir", "select C:\\a.txt", "open C:\\",
                                "select C:\\", "open C:\\"}));
}

TEST(PathActions, AskTheShell) {
  RecordingShell shell;
  EXPECT_TRUE(CopyPathToClipboard(shell, u"C:\\a b"));
  shell.takesClipboard = false;
  EXPECT_FALSE(CopyPathToClipboard(shell, u"C:\\a"));
  ShowProperties(shell, u"C:\\a b");
  EXPECT_EQ(shell.calls, (Calls{"text C:\\a b", "text C:\\a", "properties C:\\a b"}));
}

}  // namespace
}  // namespace quilmark
