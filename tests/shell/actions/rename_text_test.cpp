#include "shell/actions/rename_text.h"

#include <gtest/gtest.h>

#include <utility>

namespace quilmark {
namespace {

RenameStep Check(std::u16string text) { return CheckRename(u"old.txt", std::move(text)).step; }

TEST(Rename, ChecksTheNewName) {
  EXPECT_EQ(Check(u"new.txt"), RenameStep::kRename);
  EXPECT_EQ(Check(u"OLD.txt"), RenameStep::kRename);  // another case is another name
  EXPECT_EQ(Check(u" old.txt "), RenameStep::kClose);
  EXPECT_EQ(Check(u"  "), RenameStep::kClose);
  for (const char16_t bad : std::u16string_view(u"\\/:*?\"<>|")) {
    EXPECT_EQ(Check(std::u16string(u"a") + bad), RenameStep::kInvalid);
  }
}

TEST(Rename, TrimsTheNewName) { EXPECT_EQ(CheckRename(u"old.txt", u" new.txt ").name, u"new.txt"); }

TEST(Rename, LeavesANameWithBlanksAtItsEndAlone) {
  EXPECT_EQ(CheckRename(u"a ", u"a ").step, RenameStep::kClose);
}

TEST(Rename, TakesDotsAndBlanksOffTheEndAsTheSystemDoes) {
  const RenameCheck check = CheckRename(u"old.txt", u"new.txt. . ");
  EXPECT_EQ(check.step, RenameStep::kRename);
  EXPECT_EQ(check.name, u"new.txt");
  EXPECT_EQ(Check(u"..."), RenameStep::kClose);
}

TEST(Rename, RefusesWhatHardlyAnybodyCanOpen) {
  for (const char16_t* const name : {u"con", u"NUL.txt", u"Com1", u"lpt9.tar.gz", u"a\tb", u"a\nb"}) {
    EXPECT_EQ(Check(name), RenameStep::kInvalid);
  }
  for (const char16_t* const name : {u"console", u"com", u"com0", u"com10", u"xcon"}) {
    EXPECT_EQ(Check(name), RenameStep::kRename);
  }
}

TEST(Rename, SelectsAFilesNameWithoutItsExtension) {
  EXPECT_EQ(SelectedStem(u"archive.tar.gz", false), 11u);
  EXPECT_EQ(SelectedStem(u"Makefile", false), 8u);
  EXPECT_EQ(SelectedStem(u".gitignore", false), 0u);
  EXPECT_EQ(SelectedStem(u"folder.d", true), 8u);
}

TEST(FailedRename, ClosesTheEditorOfAFileThatIsGone) {
  for (const CommitEnd end :
       {CommitEnd::kByKey, CommitEnd::kByLeaving, CommitEnd::kByLeavingTheProgram}) {
    EXPECT_EQ(AfterFailedRename(true, end), FailedRename::kClose);
  }
}

TEST(FailedRename, IsToldOverItsOwnWindowAlone) {
  EXPECT_EQ(AfterFailedRename(false, CommitEnd::kByKey), FailedRename::kTell);
  EXPECT_EQ(AfterFailedRename(false, CommitEnd::kByLeaving), FailedRename::kTell);
  EXPECT_EQ(AfterFailedRename(false, CommitEnd::kByLeavingTheProgram), FailedRename::kKeep);
}

}  // namespace
}  // namespace quilmark
