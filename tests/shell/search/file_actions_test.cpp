#include "shell/search/file_actions.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <future>

#include "platform/background.h"
#include "platform/files.h"
#include "search/results/search_pipeline.h"
#include "shell/actions/recent_opens.h"
#include "shell/search/rename.h"
#include "shell/window_harness.h"
#include "support/gate.h"
#include "support/mapped_drive.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

using Calls = std::vector<std::string>;
using Paths = std::vector<std::u16string>;

constexpr uint64_t kDirFrn = 500;

// Q: with \dir, \dir\a.txt, \dir\b.txt and \c.txt, which are rows 0 to 3 of the list and on the disk.
class FileActions : public testing::Test {
 protected:
  FileActions() {
    folder_.MakeFile("dir/a.txt", "a");
    folder_.MakeFile("dir/b.txt", "b");
    folder_.MakeFile("c.txt", "c");
    Engine().ready = true;
    TheRecentOpens().Clear();
    // With an empty box each open would put other rows into the list, when its job comes to it.
    SearchFor(u"a");
    Hold({0, 1, 2, 3});
  }
  ~FileActions() override { TheRecentOpens().Clear(); }

  MatchItem HitOf(int row) const { return {&volume_, std::array{dir_, a_, b_, c_}[size_t(row)]}; }
  void Hold(const std::vector<int>& rows) {
    ResultSet set;
    for (const int row : rows) set.push_back(HitOf(row));
    HoldRows(std::make_shared<const ResultSet>(std::move(set)));
    FollowNewResults(KeepFiltered::kNo, rows.size());
    See();
  }
  // As a paint does, and the choice of one of the rows that it shows.
  void See() {
    (void)view.source.Read(0, 1);
    BeginChoice(view);
  }
  void Choose(const std::vector<int64_t>& rows) {
    See();
    ClearSelection(view.list.selection);
    for (const int64_t row : rows) SelectToggle(view.list.selection, row);
  }
  void Run(FileAction action) { EXPECT_TRUE(RunFileAction(view, harness_.Context(), action).isTaken); }
  Calls CallsOf(FileAction action, const std::vector<int64_t>& rows) {
    Choose(rows);
    shell.calls.clear();
    Run(action);
    return shell.calls;
  }
  // As the system's shell does with what is there.
  void LetDelete() {
    shell.operationDeletes = [](const std::u16string& path) {
      return std::filesystem::remove_all(HostPathBytes(path)) > 0;
    };
  }
  bool IsThere(const std::string& name) { return std::filesystem::exists(folder_.HostPath() / name); }
  bool IsDeleted(int row) { return KindOfLocked(volume_, HitOf(row).index)->isDeleted; }
  void SearchFor(const std::u16string& text) { harness_.window.texts[kQueryBox] = text; }
  static Paths RecentPaths() {
    Paths paths;
    for (const RecentOpenEntry& entry : TheRecentOpens().Entries()) paths.push_back(entry.path);
    return paths;
  }
  // Of the rows that the search which ran last has found.
  Paths FoundPaths() {
    EXPECT_EQ(harness_.search.KindsUntilFinal(), std::vector{ResultKind::kFinal});
    Paths paths;
    for (const MatchItem& hit : *HeldResults()) paths.push_back(BuildPathLocked(volume_, hit.index));
    return paths;
  }

  ScratchFolder folder_;
  MappedDrive drive_{u'Q', folder_.Path()};
  WindowHarness harness_;
  VolumeIndex& volume_ = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  uint32_t dir_ = AddFolder(volume_, u"dir", kRootFrnOfTests, kDirFrn);
  uint32_t a_ = AddFile(volume_, u"a.txt", kDirFrn), b_ = AddFile(volume_, u"b.txt", kDirFrn);
  uint32_t c_ = AddFile(volume_, u"c.txt");

 public:
  SearchView& view = harness_.app.search;
  RecordingShell& shell = harness_.shell;
  RecordingWindow& window = harness_.window;
};

TEST_F(FileActions, ShowTheFirstFileInItsFolder) {
  EXPECT_EQ(CallsOf(FileAction::kOpenFolder, {1, 3}), Calls{"select Q:\\dir\\a.txt"});
  shell.selects = false;
  EXPECT_EQ(CallsOf(FileAction::kOpenFolder, {3}), Calls{"select Q:\\c.txt"})
      << "what the shell answers is not looked at";
}

TEST_F(FileActions, OpenEachFileInTheOrderOfRows) {
  EXPECT_EQ(CallsOf(FileAction::kOpen, {3, 0}), (Calls{"open Q:\\dir", "open Q:\\c.txt"}));
}

// The newest first.
TEST_F(FileActions, RecordWhatWasOpened) {
  CallsOf(FileAction::kOpen, {0, 3});
  EXPECT_EQ(RecentPaths(), (Paths{u"Q:\\c.txt", u"Q:\\dir"}));
  CallsOf(FileAction::kRunAsAdmin, {1, 2});
  EXPECT_EQ(RecentPaths().front(), u"Q:\\dir\\a.txt");
  CallsOf(FileAction::kOpenFolder, {2});
  EXPECT_EQ(RecentPaths(), (Paths{u"Q:\\dir", u"Q:\\dir\\a.txt", u"Q:\\c.txt"})) << "the folder";
  CallsOf(FileAction::kProperties, {2});
  CallsOf(FileAction::kCopy, {2});
  EXPECT_EQ(RecentPaths().size(), 3u);
}

TEST_F(FileActions, RecordNoFolderThatIsGone) {
  MarkDeleted(volume_, dir_);
  CallsOf(FileAction::kOpenFolder, {1});
  EXPECT_EQ(RecentPaths(), Paths{});
}

// The record may be another file's by then.
TEST_F(FileActions, RecordNothingOfAVolumeThatWasBuiltMeanwhile) {
  shell.afterCall = [&](const std::string&) { ++volume_.builds; };
  EXPECT_EQ(CallsOf(FileAction::kOpen, {1, 3}).size(), 2u);
  CallsOf(FileAction::kRunAsAdmin, {1});
  EXPECT_EQ(RecentPaths(), Paths{});
}

TEST_F(FileActions, ShowTheRecentViewAnewAfterOpening) {
  SearchFor(u"");
  for (const FileAction action : {FileAction::kOpen, FileAction::kOpenFolder, FileAction::kRunAsAdmin}) {
    Hold({0, 1, 2, 3});
    const uint64_t before = SearchNumber();
    CallsOf(action, {1});
    EXPECT_GT(SearchNumber(), before);
    ASSERT_TRUE(WaitForBackgroundJobs(60'000)) << "which show other rows";
  }
  Hold({0, 1, 2, 3});
  SearchFor(u"txt");
  const uint64_t before = SearchNumber();
  CallsOf(FileAction::kOpen, {1});
  SearchFor(u"");
  TheSearch().SuppressRecentView = true;
  CallsOf(FileAction::kOpen, {1});
  EXPECT_EQ(SearchNumber(), before);
}

TEST_F(FileActions, RunTheFirstFileAsAdministrator) {
  EXPECT_EQ(CallsOf(FileAction::kRunAsAdmin, {1, 2}), Calls{"runas Q:\\dir\\a.txt"});
}

TEST_F(FileActions, ShowPropertiesOfTheFirstFile) {
  EXPECT_EQ(CallsOf(FileAction::kProperties, {1, 2}), Calls{"properties Q:\\dir\\a.txt"});
}

TEST_F(FileActions, CopyPathsLineByLine) {
  EXPECT_EQ(CallsOf(FileAction::kCopyPath, {1}), Calls{"text Q:\\dir\\a.txt"});
  EXPECT_EQ(CallsOf(FileAction::kCopyPath, {1, 3}), Calls{"text Q:\\dir\\a.txt\r\nQ:\\c.txt"});
  shell.takesClipboard = false;
  EXPECT_EQ(CallsOf(FileAction::kCopyPath, {1}).size(), 1u);
  EXPECT_TRUE(window.errors.empty()) << "nobody is told";
}

TEST_F(FileActions, CopyAndCutFiles) {
  EXPECT_EQ(CallsOf(FileAction::kCopy, {1, 3}), Calls{"copy Q:\\dir\\a.txt|Q:\\c.txt"});
  EXPECT_EQ(CallsOf(FileAction::kCut, {1, 3}), Calls{"cut Q:\\dir\\a.txt|Q:\\c.txt"});
  EXPECT_TRUE(window.errors.empty());
  shell.takesClipboard = false;
  Run(FileAction::kCopy);
  Run(FileAction::kCut);
  EXPECT_EQ(window.errors, Paths(2, u"Failed to copy to clipboard."));
}

TEST_F(FileActions, LeaveTheListAsItIsAfterACut) {
  Choose({1});
  const uint64_t before = SearchNumber();
  Run(FileAction::kCut);
  EXPECT_EQ(SearchNumber(), before);
  EXPECT_EQ(HeldResults()->size(), 4u);
  EXPECT_FALSE(IsDeleted(1));
}

TEST_F(FileActions, DoNothingWithoutAChoice) {
  for (int action = 0; action <= 8; ++action) {
    EXPECT_EQ(CallsOf(static_cast<FileAction>(action), {}), Calls{});
    EXPECT_EQ(CallsOf(static_cast<FileAction>(action), {4, 100}), Calls{}) << "behind the last row";
  }
  EXPECT_FALSE(BeginFileDrag(view, harness_.Context()).isTaken);
  (void)ShowSystemContextMenu(view, harness_.Context());
  EXPECT_EQ(shell.calls, Calls{});
}

TEST_F(FileActions, TakeTheRowThatHasTheFocusWhereNoneIsChosen) {
  Choose({});
  view.list.selection.focusRow = 3;
  Run(FileAction::kOpen);
  EXPECT_EQ(shell.calls, Calls{"open Q:\\c.txt"});
}

TEST_F(FileActions, PassOverRowsThatAreGone) {
  MarkDeleted(volume_, b_);
  EXPECT_EQ(CallsOf(FileAction::kCopy, {1, 2, 3}), Calls{"copy Q:\\dir\\a.txt|Q:\\c.txt"});
  MarkDeleted(volume_, a_);
  EXPECT_EQ(CallsOf(FileAction::kCopy, {1, 2, 3}), Calls{}) << "the first has no path";
  EXPECT_EQ(CallsOf(FileAction::kCopy, {3}), Calls{"copy Q:\\c.txt"});
  volume_.valid = false;
  EXPECT_EQ(CallsOf(FileAction::kCopy, {3}), Calls{});
}

TEST_F(FileActions, PassOverNoRowOfAVolumeThatIsWrittenTo) {
  Choose({0, 1, 2, 3});
  Gate writer(volume_.indexLock, Gate::Stops::kAll);
  auto end = std::async(std::launch::async, [&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));  // longer than a paint would wait
    writer.Open();
  });
  Run(FileAction::kCopy);
  end.get();
  EXPECT_EQ(shell.calls, Calls{"copy Q:\\dir|Q:\\dir\\a.txt|Q:\\dir\\b.txt|Q:\\c.txt"});
}

TEST_F(FileActions, AskBeforeManyFilesAreOpened) {
  ResultSet rows(16, HitOf(3));
  HoldRows(std::make_shared<const ResultSet>(rows));
  FollowNewResults(KeepFiltered::kNo, 16);
  See();
  view.list.selection.rows.assign(0, 14);
  Run(FileAction::kOpen);
  EXPECT_EQ(shell.calls.size(), 15u);
  EXPECT_TRUE(shell.questions.empty());

  view.list.selection.rows.assign(0, 15);
  shell.calls.clear();
  shell.saysYes = false;
  Run(FileAction::kOpen);
  EXPECT_EQ(shell.calls, Calls{"ask"});
  EXPECT_EQ(shell.questions.back().text, u"Open all 16 selected items?");
  shell.saysYes = true;
  Run(FileAction::kOpen);
  EXPECT_EQ(shell.calls.size(), 1u + 17u);
}

TEST_F(FileActions, AskWithThePathBeforeASingleFileIsDeleted) {
  shell.saysYes = false;
  EXPECT_EQ(CallsOf(FileAction::kDelete, {1}), Calls{"ask"});
  EXPECT_EQ(
      shell.questions.back(),
      (BoxText{u"Confirm Delete", u"Are you sure you want to delete this file?\n\nQ:\\dir\\a.txt"}));
  CallsOf(FileAction::kDelete, {1, 2});
  EXPECT_EQ(shell.questions.back().text,
            u"Are you sure you want to permanently delete 2 selected items?");
  EXPECT_TRUE(IsThere("dir/a.txt"));
  EXPECT_FALSE(IsDeleted(1));
}

TEST_F(FileActions, DeleteForGoodAndSearchAgain) {
  LetDelete();
  SearchFor(u" txt ");
  view.rows.scrollY = 77;
  EXPECT_EQ(CallsOf(FileAction::kDelete, {1}), (Calls{"ask", "operation Q:\\dir\\a.txt"}));
  EXPECT_EQ(FoundPaths(), (Paths{u"Q:\\dir\\b.txt", u"Q:\\c.txt"}));
  EXPECT_TRUE(view.keepScrollOnce);
  EXPECT_EQ(view.savedScrollY, 77);
  EXPECT_TRUE(window.errors.empty());
}

TEST_F(FileActions, RecycleWithoutAQuestion) {
  LetDelete();
  SearchFor(u"txt");
  SetSort(2, true);
  EXPECT_EQ(CallsOf(FileAction::kRecycle, {1}), Calls{"operation with undo Q:\\dir\\a.txt"});
  EXPECT_EQ(FoundPaths(), (Paths{u"Q:\\dir\\b.txt", u"Q:\\c.txt"}));
  EXPECT_EQ(SortColumn(), 2) << "the same query, because the data has changed";
}

// What the Recycle Bin refuses goes all the same.
TEST_F(FileActions, DeleteWhatTheRecycleBinRefuses) {
  LetDelete();
  shell.directlyDeletes = std::exchange(shell.operationDeletes, nullptr);
  SearchFor(u"txt");
  EXPECT_EQ(CallsOf(FileAction::kRecycle, {1}),
            (Calls{"operation with undo Q:\\dir\\a.txt", "old call with undo Q:\\dir\\a.txt",
                   "directly Q:\\dir\\a.txt"}));
  EXPECT_EQ(FoundPaths(), (Paths{u"Q:\\dir\\b.txt", u"Q:\\c.txt"}));
  EXPECT_TRUE(shell.questions.empty());
}

// No row of it comes back before the journal has told of anything.
TEST_F(FileActions, DeleteAFolderWithItsRows) {
  LetDelete();
  SearchFor(u"txt");
  CallsOf(FileAction::kRecycle, {0});
  EXPECT_EQ(FoundPaths(), Paths{u"Q:\\c.txt"});
  EXPECT_TRUE(IsDeleted(0) && IsDeleted(1) && IsDeleted(2));
}

TEST_F(FileActions, DeleteAFolderAndWhatItHolds) {
  LetDelete();
  SearchFor(u"txt");
  CallsOf(FileAction::kDelete, {0, 1, 2});
  EXPECT_EQ(shell.calls, (Calls{"ask", "operation Q:\\dir"})) << "the others went with it";
  EXPECT_TRUE(window.errors.empty());
  EXPECT_EQ(FoundPaths(), Paths{u"Q:\\c.txt"});
}

TEST_F(FileActions, TellOfFilesThatAreStillThereAfterRecycling) {
  LetDelete();
  shell.operationDeletes = [each = shell.operationDeletes](const std::u16string& path) {
    return path == u"Q:\\c.txt" && each(path);
  };
  SearchFor(u"txt");
  const uint64_t before = SearchNumber();
  CallsOf(FileAction::kRecycle, {1, 3});
  EXPECT_EQ(window.errors,
            Paths{u"Failed to move to Recycle Bin. Backup deletion methods also failed."});
  EXPECT_EQ(SearchNumber(), before) << "the list is left alone";
  EXPECT_FALSE(IsDeleted(1));
  EXPECT_TRUE(IsDeleted(3)) << "this one is gone";
}

TEST_F(FileActions, CountFilesThatAreStillThereAfterDeleting) {
  LetDelete();
  shell.operationDeletes = [each = shell.operationDeletes](const std::u16string& path) {
    return path == u"Q:\\c.txt" && each(path);
  };
  SearchFor(u"txt");
  CallsOf(FileAction::kDelete, {1, 2, 3});
  EXPECT_EQ(window.errors, Paths{u"Failed to delete 2 selected items."});
  EXPECT_EQ(FoundPaths(), (Paths{u"Q:\\dir\\a.txt", u"Q:\\dir\\b.txt"})) << "searched for in any case";
}

// It says so, but has left something.
TEST_F(FileActions, MarkNothingThatIsStillThere) {
  shell.operationDeletes = [](const std::u16string&) { return true; };
  SearchFor(u"txt");
  CallsOf(FileAction::kRecycle, {0, 3});
  EXPECT_FALSE(IsDeleted(0) || IsDeleted(1) || IsDeleted(3));
  EXPECT_EQ(FoundPaths().size(), 3u);
}

TEST_F(FileActions, TakeRowsOutOfTheResultsOfAContentQuery) {
  LetDelete();
  SearchFor(u"s:word");
  SetSort(1, false);
  const uint64_t before = SearchNumber();
  CallsOf(FileAction::kRecycle, {1, 3});
  EXPECT_EQ(FoundPaths(), (Paths{u"Q:\\dir", u"Q:\\dir\\b.txt"}));
  EXPECT_EQ(SearchNumber(), before) << "no search has begun";
  EXPECT_EQ(SortColumn(), 1);
  EXPECT_TRUE(view.keepScrollOnce);
}

TEST_F(FileActions, TakeRowsBelowADeletedFolderOutOfThemToo) {
  LetDelete();
  SearchFor(u"S:word");
  CallsOf(FileAction::kDelete, {0});
  EXPECT_EQ(FoundPaths(), Paths{u"Q:\\c.txt"});
}

TEST_F(FileActions, LeaveRowsOfAContentQueryThatAreStillThere) {
  SearchFor(u"s:word");
  CallsOf(FileAction::kDelete, {1});
  EXPECT_EQ(FoundPaths().size(), 4u);
  EXPECT_EQ(window.errors, Paths{u"Failed to delete 1 selected items."});
}

TEST_F(FileActions, ShowTheWholeIndexAgainWhereItWasShown) {
  LetDelete();
  SearchFor(u"  ");
  TheSearch().SuppressRecentView = true;
  CallsOf(FileAction::kRecycle, {0});
  EXPECT_EQ(FoundPaths(), (Paths{u"Q:\\.", u"Q:\\c.txt"}));
  EXPECT_TRUE(TheSearch().SuppressRecentView);
}

TEST_F(FileActions, ShowTheRecentOpensWhereTheyWereShown) {
  LetDelete();
  int asked = 0;
  TheSearch().hooks.recentResults = [&] {
    ++asked;
    return std::make_shared<ResultSet>();
  };
  SearchFor(u"");
  CallsOf(FileAction::kDelete, {3});
  EXPECT_EQ(FoundPaths(), Paths{});
  EXPECT_EQ(asked, 1);
}

// A shell that hands out keys meanwhile must not be asked for the same once more.
TEST_F(FileActions, BeginNoOtherWhileOneRuns) {
  LetDelete();
  SearchFor(u"txt");
  int inner = 0;
  shell.afterCall = [&](const std::string&) {
    if (++inner > 1) return;
    Run(FileAction::kRecycle);
    EXPECT_FALSE(BeginFileDrag(view, harness_.Context()).isTaken);
    (void)ShowSystemContextMenu(view, harness_.Context());
  };
  EXPECT_EQ(CallsOf(FileAction::kRecycle, {1}).size(), 1u);
  EXPECT_EQ(FoundPaths().size(), 2u);
  shell.afterCall = nullptr;
  EXPECT_EQ(CallsOf(FileAction::kCopy, {1}).size(), 1u) << "and then another may";
}

// What is being deleted gets no other name: the third way to delete goes by the old one.
TEST_F(FileActions, RenameNothingWhileOneRuns) {
  Choose({3});
  shell.whileAsked = [&] {
    EXPECT_EQ(OpenRename(view, harness_.Context()).editor, Editor::kKeep);
    EXPECT_FALSE(view.renaming.has_value());
  };
  shell.saysYes = false;
  Run(FileAction::kDelete);
  EXPECT_EQ(shell.questions.size(), 1u);
  EXPECT_EQ(OpenRename(view, harness_.Context()).editor, Editor::kOpen) << "and then it does";
}

// The tray's Exit, by a message that the shell hands out.
TEST_F(FileActions, EndWithTheProgram) {
  shell.afterCall = [](const std::string&) { ShutdownRequested = true; };
  const auto ended = [&](FileAction action) {
    Calls calls = CallsOf(action, {1, 2, 3});
    ShutdownRequested = false;
    return calls;
  };
  EXPECT_EQ(ended(FileAction::kOpen), Calls{"open Q:\\dir\\a.txt"});
  LetDelete();
  EXPECT_EQ(ended(FileAction::kRecycle), Calls{"operation with undo Q:\\dir\\a.txt"});
  EXPECT_TRUE(IsThere("dir/b.txt"));
  EXPECT_TRUE(window.errors.empty());
  EXPECT_TRUE(IsDeleted(1));
}

// Results come in, and clear the selection, while the question stands: it was about these files.
TEST_F(FileActions, DeleteWhatWasAskedAbout) {
  LetDelete();
  SearchFor(u"txt");
  shell.whileAsked = [&] {
    Hold({2, 3});
    ClearSelection(view.list.selection);
  };
  EXPECT_EQ(CallsOf(FileAction::kDelete, {1}), (Calls{"ask", "operation Q:\\dir\\a.txt"}));
  EXPECT_EQ(FoundPaths(), (Paths{u"Q:\\dir\\b.txt", u"Q:\\c.txt"}));
}

// The volume is built anew while the question stands: another file may have the record.
TEST_F(FileActions, MarkNoRecordOfAVolumeThatWasBuiltMeanwhile) {
  LetDelete();
  SearchFor(u"txt");
  shell.whileAsked = [&] { ++volume_.builds; };
  CallsOf(FileAction::kDelete, {1});
  EXPECT_FALSE(IsDeleted(1));
  EXPECT_EQ(FoundPaths().size(), 3u);
}

TEST_F(FileActions, DragTheChosenFiles) {
  Choose({1, 3});
  bool isTipHidden = false;
  shell.whileDragged = [&] { isTipHidden = window.tip == u""; };
  window.tip = u"a tip";
  const Effects effects = BeginFileDrag(view, harness_.Context());
  EXPECT_TRUE(effects.isTaken);
  EXPECT_TRUE(effects.rehovers);
  EXPECT_TRUE(isTipHidden);
  EXPECT_EQ(shell.calls, Calls{"drag Q:\\dir\\a.txt|Q:\\c.txt"});
  shell.drags = false;
  EXPECT_FALSE(BeginFileDrag(view, harness_.Context()).isTaken);
}

TEST_F(FileActions, OpenTheSystemMenuForOneFolder) {
  Choose({1, 2, 3});
  EXPECT_TRUE(ShowSystemContextMenu(view, harness_.Context()).rehovers);
  Choose({0, 1, 3});
  (void)ShowSystemContextMenu(view, harness_.Context());
  EXPECT_EQ(shell.calls, (Calls{"menu Q:\\dir\\a.txt|Q:\\dir\\b.txt", "menu Q:\\dir|Q:\\c.txt"}));
}

// The shell takes the dot off, and the name is that of another file.
TEST_F(FileActions, KeepFromTheShellWhatItTakesForAnotherFile) {
  const uint32_t dot = AddFile(volume_, u"c.txt.");
  HoldRows(std::make_shared<const ResultSet>(ResultSet{{&volume_, dot}, HitOf(3)}));
  FollowNewResults(KeepFiltered::kNo, 2);
  for (const FileAction action : {FileAction::kOpen, FileAction::kOpenFolder, FileAction::kRunAsAdmin,
                                  FileAction::kProperties, FileAction::kCopy, FileAction::kCut}) {
    EXPECT_EQ(CallsOf(action, {0}), Calls{}) << static_cast<int>(action);
  }
  EXPECT_EQ(window.errors.size(), 2u) << "of both that copy";
  EXPECT_EQ(CallsOf(FileAction::kCopy, {0, 1}), Calls{}) << "all of them or none";
  EXPECT_EQ(CallsOf(FileAction::kOpen, {0, 1}), Calls{"open Q:\\c.txt"});
  Choose({0});
  EXPECT_FALSE(BeginFileDrag(view, harness_.Context()).isTaken);
  (void)ShowSystemContextMenu(view, harness_.Context());
  EXPECT_EQ(shell.calls, Calls{"open Q:\\c.txt"}) << "and nothing more";
}

// Jobs put other rows into the list before the window hears of them.
TEST_F(FileActions, DoNothingToRowsThatCameSinceTheChoice) {
  Choose({1});
  shell.calls.clear();
  ResultSet others{HitOf(3), HitOf(2)};
  HoldRows(std::make_shared<const ResultSet>(others));
  FollowNewResults(KeepFiltered::kNo, 2);
  Run(FileAction::kRecycle);
  EXPECT_EQ(shell.calls, Calls{});
  EXPECT_EQ(window.status, u"The list has changed meanwhile. Search and choose again.");
  EXPECT_TRUE(view.list.selection.rows.empty());
}

// Painted in the meantime, without the message that clears the choice.
TEST_F(FileActions, DoNothingToOtherRowsUnderTheOldNumbers) {
  Choose({1});
  shell.calls.clear();
  ResultSet others{HitOf(3), HitOf(2)};
  HoldRows(std::make_shared<const ResultSet>(others));
  FollowNewResults(KeepFiltered::kNo, 2);
  (void)view.source.Read(0, 2);
  Run(FileAction::kDelete);
  EXPECT_EQ(shell.calls, Calls{});
  SelectOnly(view.list.selection, 0);
  BeginChoice(view);
  EXPECT_TRUE(view.list.selection.rows.empty()) << "of the former rows";
}

TEST_F(FileActions, DoNothingToRowsOfAVolumeThatWasBuiltSinceTheyWereSeen) {
  Choose({1});
  shell.calls.clear();
  ++volume_.builds;
  Run(FileAction::kRecycle);
  EXPECT_EQ(shell.calls, Calls{});
  Choose({1});
  Run(FileAction::kCopy);
  EXPECT_EQ(shell.calls, Calls{}) << "the rows on the screen are still the old ones";
  Hold({0, 1, 2, 3});
  EXPECT_EQ(CallsOf(FileAction::kCopy, {1}), Calls{"copy Q:\\dir\\a.txt"}) << "found anew";
}

}  // namespace
}  // namespace quilmark
