#include "shell/search/rename.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include "platform/files.h"
#include "shell/app/window_events.h"
#include "shell/search/search_keys.h"
#include "shell/search/search_places.h"
#include "shell/test_pump.h"
#include "shell/view/window_ids.h"
#include "support/mapped_drive.h"

namespace quilmark {
namespace {

// Q: with ten files that are on the disk, "file 0.txt" and so on, each a row of the list.
class RenameInTheList : public testing::Test {
 protected:
  RenameInTheList() {
    auto rows = std::make_shared<ResultSet>();
    for (int i = 0; i < 10; ++i) {
      const std::string name = "file " + std::to_string(i) + ".txt";
      folder_.MakeFile(name, "x");
      const uint32_t record = AddFile(volume_, std::u16string(name.begin(), name.end()));
      rows->push_back({&volume_, record});
    }
    rows_ = std::move(rows);
    Hold(rows_);
    Engine().ready = true;
    view.isBoxEnabled = true;
    pump.Create();
    pump.trace.clear();
  }

  void Hold(std::shared_ptr<const ResultSet> rows) {
    const size_t count = rows->size();
    HoldRows(std::move(rows));
    FollowNewResults(KeepFiltered::kNo, count);
  }
  // As they come from a search.
  void TakeFinalResults(size_t count) {
    SupersedeSearch();
    Hold(std::make_shared<const ResultSet>(rows_->end() - static_cast<ptrdiff_t>(count), rows_->end()));
    pump.Post({WM_SEARCH_RESULTS, SearchNumber(), static_cast<int64_t>(ResultKind::kFinal)});
  }

  // On the name of a row.
  Point InRow(int row) {
    const ColumnsLayout layout = PlaceColumns(view, pump.Context());
    const Rect place = view.rows.PlaceOf(static_cast<uint64_t>(row));
    return {layout.rows.left + layout.columns[0] + 60, place.top + 20};
  }
  void Edit(int row, const std::u16string& text) {
    SelectOnly(view.list.selection, row);
    pump.Key(kKeyF2);
    ASSERT_TRUE(pump.editor.has_value());
    pump.Type(text);
    pump.trace.clear();
  }
  bool IsThere(const std::string& name) { return std::filesystem::exists(folder_.HostPath() / name); }
  std::u16string NameOf(int row) { return TextOfRow((*rows_)[static_cast<size_t>(row)]).name; }
  std::string Dirty() const { return "dirty " + std::to_string(view.headerTop) + "..700"; }
  void ExpectNoEditor() {
    EXPECT_FALSE(pump.editor.has_value());
    EXPECT_FALSE(view.renaming.has_value());
  }

  ScratchFolder folder_;
  MappedDrive drive_{u'Q', folder_.Path()};
  WindowHarness harness_;
  VolumeIndex& volume_ = *AddVolume(Engine(), MakeTestVolume(u"Q:"));
  std::shared_ptr<const ResultSet> rows_;

 public:
  AppState& app = harness_.app;
  SearchView& view = app.search;
  TestPump pump{harness_};
};

TEST_F(RenameInTheList, TheFilesThatWereOpenedLastFollow) {
  RecordRecentOpen((*rows_)[2]);
  Edit(2, u"other.txt");
  pump.PressInEditor(ControlEvent::kEnter);
  ASSERT_EQ(TheRecentOpens().Entries().size(), 1u);
  EXPECT_EQ(TheRecentOpens().Entries()[0].path, u"Q:\\other.txt");
}

TEST_F(RenameInTheList, AKeyOpensTheEditorOverTheChosenName) {
  SelectOnly(view.list.selection, 2);
  EXPECT_TRUE(pump.Key(kKeyF2));
  EXPECT_EQ(pump.Trace(), "create editor | focus w>e");
  EXPECT_EQ(pump.editor->text, u"file 2.txt");
  EXPECT_EQ(pump.editor->selected, 6u);
  EXPECT_TRUE(Holds(pump.editor->place, InRow(2)));
  // Once more: all of it is chosen.
  pump.Key(kKeyF2);
  EXPECT_EQ(pump.Trace(), "create editor | focus w>e");
  EXPECT_EQ(pump.editor->selected, 10u);
}

TEST_F(RenameInTheList, NothingIsEditedWithoutARow) {
  pump.Key(kKeyF2);
  SelectOnly(view.list.selection, 10);
  pump.Key(kKeyF2);
  EXPECT_EQ(pump.Trace(), "");
  ExpectNoEditor();
}

TEST_F(RenameInTheList, APressOnAnotherRowTakesTheName) {
  Edit(1, u"new.txt");
  pump.Press(InRow(3));
  EXPECT_EQ(pump.Trace(), Dirty() + " | focus e>w | " + Dirty() + " | destroy editor");
  EXPECT_EQ(pump.focus, KeysGoTo::kWindow);
  EXPECT_EQ(view.list.selection.focusRow, 3) << "the row that was pressed";
  EXPECT_EQ(NameOf(1), u"new.txt");
  EXPECT_TRUE(IsThere("new.txt"));
  EXPECT_FALSE(IsThere("file 1.txt"));
  ExpectNoEditor();
}

TEST_F(RenameInTheList, APressThatFollowsARefusedNameEndsInTheEditor) {
  Edit(1, u"a?b");
  pump.Press(InRow(6));
  EXPECT_EQ(pump.Trace(), Dirty() + " | focus e>w | ask | focus ->e");
  EXPECT_EQ(pump.focus, KeysGoTo::kEditor);
  EXPECT_EQ(pump.editor->text, u"a?b");
  EXPECT_EQ(pump.editor->selected, 3u);
  EXPECT_EQ(view.list.selection.focusRow, 6);
  EXPECT_EQ(view.renaming->index, 1);
  EXPECT_EQ(pump.errors, std::vector<std::u16string>{u"The name contains invalid characters."});
  // The user gives up.
  pump.PressInEditor(ControlEvent::kEscape);
  ExpectNoEditor();
  EXPECT_TRUE(IsThere("file 1.txt"));
}

TEST_F(RenameInTheList, EnterRenamesTheFileAndChoosesItsRow) {
  Edit(1, u"  new name.txt.. ");
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_EQ(pump.Trace(), Dirty() + " | destroy editor | focus e>w");
  EXPECT_EQ(pump.focus, KeysGoTo::kWindow);
  EXPECT_TRUE(IsThere("new name.txt"));
  EXPECT_FALSE(IsThere("file 1.txt"));
  EXPECT_EQ(NameOf(1), u"new name.txt");
  EXPECT_EQ(view.list.selection.focusRow, 1);
  ExpectNoEditor();
}

TEST_F(RenameInTheList, EnterOnTheSameNameOnlyCloses) {
  Edit(1, u"file 1.txt");
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_EQ(pump.Trace(), Dirty() + " | destroy editor | focus e>w");
  EXPECT_TRUE(IsThere("file 1.txt"));
  ExpectNoEditor();
}

TEST_F(RenameInTheList, EscapeKeepsTheNameAndTakesTheKeysToTheBox) {
  Edit(1, u"new.txt");
  pump.PressInEditor(ControlEvent::kEscape);
  EXPECT_EQ(pump.Trace(), Dirty() + " | destroy editor | focus e>w | focus w>s");
  EXPECT_TRUE(IsThere("file 1.txt"));
  EXPECT_EQ(NameOf(1), u"file 1.txt");
  ExpectNoEditor();
}

TEST_F(RenameInTheList, ANameThatTheDiskRefusesComesBackIntoTheEditor) {
  folder_.MakeFile("taken", "x");
  Edit(1, u"taken");
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_EQ(pump.errors, std::vector<std::u16string>{u"Rename failed.\nError: 183"});
  EXPECT_EQ(pump.focus, KeysGoTo::kEditor);
  EXPECT_TRUE(IsThere("file 1.txt"));
  EXPECT_FALSE(view.renaming->isCommitting);
  // A better one is taken.
  pump.Type(u"free");
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_TRUE(IsThere("free"));
  ExpectNoEditor();
}

TEST_F(RenameInTheList, ResultsThatComeDuringTheQuestionEndTheEditing) {
  folder_.MakeFile("taken", "x");
  for (const auto end : {ControlEvent::kEnter, ControlEvent::kLeft}) {
    SCOPED_TRACE(static_cast<int>(end));
    Edit(1, u"taken");
    pump.whileTold = [this] { TakeFinalResults(2); };
    pump.PressInEditor(end);
    EXPECT_EQ(pump.errors.size(), 1u);
    ExpectNoEditor();
    EXPECT_EQ(pump.focus, KeysGoTo::kSearchBox);
    EXPECT_EQ(view.list.selection.focusRow, -1);
    EXPECT_EQ(view.shownGeneration, SearchNumber());
    EXPECT_TRUE(IsThere("file 1.txt"));
    pump.errors.clear();
    Hold(rows_);
  }
}

// While the message stands, none of it commits once more.
TEST_F(RenameInTheList, OneQuestionAtATime) {
  Edit(1, u"a?b");
  pump.whileTold = [this] {
    pump.PressInEditor(ControlEvent::kEnter);
    pump.Press(InRow(4));
    pump.ComeBack();
    EXPECT_EQ(pump.focus, KeysGoTo::kEditor);
    pump.SetFocusTo(KeysGoTo::kWindow);
  };
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_EQ(pump.errors.size(), 1u);
  EXPECT_EQ(pump.focus, KeysGoTo::kEditor);
  EXPECT_EQ(view.list.selection.focusRow, 4);
  EXPECT_FALSE(view.renaming->isCommitting);
  pump.whileTold = nullptr;
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_EQ(pump.errors.size(), 2u) << "an answer to the next one";
}

// The editor of another row, opened while the message about the first one stands.
TEST_F(RenameInTheList, AnotherEditorThatOpenedMeanwhileIsLeftAlone) {
  Edit(1, u"a?b");
  pump.whileTold = [this] {
    TakeFinalResults(10);
    SelectOnly(view.list.selection, 5);
    pump.Key(kKeyF2);
  };
  pump.PressInEditor(ControlEvent::kEnter);
  ASSERT_TRUE(pump.editor.has_value());
  EXPECT_EQ(pump.editor->text, u"file 5.txt");
  EXPECT_EQ(view.renaming->index, 5);
  EXPECT_EQ(pump.editor->selected, 6u) << "what it chose at first";
  pump.whileTold = nullptr;
  pump.Type(u"five");
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_TRUE(IsThere("five"));
}

TEST_F(RenameInTheList, AWindowThatClosesDuringTheQuestionTakesTheEditorWithIt) {
  Edit(1, u"a?b");
  app.trayIconAdded = true;
  pump.whileTold = [this] { CloseWindowRequest(app, pump.Context()); };
  pump.PressInEditor(ControlEvent::kEnter);
  ExpectNoEditor();
  EXPECT_FALSE(pump.isVisible);
  EXPECT_TRUE(IsThere("file 1.txt"));
}

TEST_F(RenameInTheList, WhoLeavesTheProgramWithABadNameFindsTheEditorAgain) {
  Edit(1, u"a?b");
  pump.LeaveProgram();
  EXPECT_EQ(pump.errors.size(), 0u);
  ASSERT_TRUE(pump.editor.has_value());
  pump.ComeBack();
  EXPECT_EQ(pump.focus, KeysGoTo::kEditor);
  EXPECT_EQ(pump.editor->text, u"a?b");
  // With a good one it is done.
  pump.Type(u"good");
  pump.LeaveProgram();
  EXPECT_TRUE(IsThere("good"));
  ExpectNoEditor();
  EXPECT_EQ(pump.focus, KeysGoTo::kElsewhere);
}

TEST_F(RenameInTheList, AFileThatIsGoneNeedsNoQuestion) {
  Edit(1, u"new.txt");
  std::filesystem::remove(folder_.HostPath() / "file 1.txt");
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_EQ(pump.errors.size(), 0u);
  ExpectNoEditor();
}

TEST_F(RenameInTheList, WhatComesLateOfAClosedEditorDoesNothing) {
  Edit(1, u"new.txt");
  pump.PressInEditor(ControlEvent::kEscape);
  pump.trace.clear();
  pump.Control({.kind = ControlEvent::kLeft, .id = kNameEditor, .text = u"new.txt"});
  pump.Control({.kind = ControlEvent::kEnter, .id = kNameEditor, .text = u"new.txt"});
  EXPECT_EQ(pump.Trace(), "");
  EXPECT_TRUE(IsThere("file 1.txt"));
}

TEST_F(RenameInTheList, EnterInAnotherFieldIsNoName) {
  Edit(1, u"new.txt");
  EXPECT_FALSE(pump.Control({.kind = ControlEvent::kEnter, .id = kSizeBox, .text = u"0-7"}));
  EXPECT_TRUE(pump.editor.has_value());
  EXPECT_TRUE(IsThere("file 1.txt"));
  EXPECT_FALSE(IsThere("0-7"));
}

TEST_F(RenameInTheList, UnderAFilterTheRowsChangeAndNoneIsChosen) {
  CurrentWindowSettings.sizePreset = 1;
  Edit(1, u"new.txt");
  pump.PressInEditor(ControlEvent::kEnter);
  EXPECT_EQ(harness_.engine.filtered, 1);
  EXPECT_EQ(view.list.selection.focusRow, -1);
  EXPECT_TRUE(IsThere("new.txt"));
}

TEST_F(RenameInTheList, TheEditorFollowsItsRow) {
  Hold(std::make_shared<const ResultSet>(1'000, rows_->front()));
  Edit(3, u"file 3.txt");
  const Rect before = pump.editor->place;
  pump.Send({.kind = Mouse::kWheel, .at = InRow(2), .delta = -60});
  EXPECT_EQ(pump.editor->place.top, before.top - 50);
  EXPECT_EQ(pump.focus, KeysGoTo::kEditor);
  pump.Send({.kind = Mouse::kWheel, .at = InRow(2), .delta = -12'000});
  EXPECT_LT(pump.editor->place.bottom, 0) << "out of sight, with what was typed";
  EXPECT_EQ(pump.focus, KeysGoTo::kEditor);
}

}  // namespace
}  // namespace quilmark
