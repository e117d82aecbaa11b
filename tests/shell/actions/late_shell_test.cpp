#include "shell/actions/late_shell.h"

#include <gtest/gtest.h>

#include "shell/recording_shell.h"

namespace quilmark {
namespace {

// Every call there is. What each that answers has said.
std::vector<bool> CallAll(ShellPort& shell) {
  shell.Execute(ShellVerb::kRunAsAdmin, u"a");
  shell.Tell({u"title", u"text"});
  shell.ShowSystemMenu({u"a", u"b"});
  return {shell.SelectInFileManager(u"a"),
          shell.CopyText(u"a"),
          shell.CopyFiles({u"a"}, DropEffect::kMove),
          shell.DeleteByOperation(u"a", Undo::kYes),
          shell.DeleteByOldCall(u"a", Undo::kNo),
          shell.DeleteDirectly(u"a"),
          shell.Ask({u"title", u"text"}),
          shell.Drag({u"a"})};
}

TEST(LateShell, HandsEachCallOn) {
  const auto deletes = [](const std::u16string&) { return true; };
  RecordingShell direct, behind;
  for (RecordingShell* shell : {&direct, &behind}) {
    shell->operationDeletes = shell->oldCallDeletes = shell->directlyDeletes = deletes;
  }
  LateShell late;
  late.real = &behind;
  EXPECT_EQ(CallAll(late), CallAll(direct));
  EXPECT_EQ(behind.calls, direct.calls);
  EXPECT_EQ(behind.calls.size(), 11u);
  EXPECT_EQ(behind.questions, direct.questions);
  EXPECT_EQ(behind.notices, direct.notices);
  EXPECT_EQ(CallAll(late), std::vector<bool>(8, true));
}

TEST(LateShell, FailsWithoutOne) {
  LateShell late;
  EXPECT_EQ(CallAll(late), std::vector<bool>(8, false));
}

}  // namespace
}  // namespace quilmark
