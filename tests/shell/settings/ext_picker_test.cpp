#include "shell/settings/ext_picker.h"

#include <gtest/gtest.h>

#include "config/config_directory.h"
#include "config/scratch_config.h"
#include "config/window_settings.h"
#include "content/settings/picker_exts.h"
#include "platform/text_file.h"

namespace quilmark {
namespace {

using Extensions = std::vector<std::u16string>;

// Writes down what the window is asked for.
struct RecordingPicker : PickerScreen {
  void ShowRows(const std::vector<PickerRow>& shown) override {
    rows = shown;
    ++fills;
  }
  std::vector<size_t> SelectedRows() override { return selected; }
  std::u16string FieldText() override { return field; }
  void EmptyField() override { field.clear(); }
  void Tell(const std::u16string& text) override { told.push_back(text); }
  bool Ask(const std::u16string& question) override {
    asked.push_back(question);
    return saysYes;
  }
  void OpenFile(const std::u16string& path) override { opened.push_back(path); }
  void Close() override { isClosed = true; }

  std::vector<PickerRow> rows;
  std::vector<size_t> selected;
  std::u16string field;
  std::vector<std::u16string> told, asked, opened;
  int fills = 0;
  bool saysYes = true, isClosed = false;
};

class ExtPickerTest : public testing::Test {
 protected:
  ExtPickerTest() {
    CurrentWindowSettings.contentSearchExts.clear();
    SavePickerExts({u".txt", u".md", u".log"});
    picker.whenPicked = [this](const Extensions& extensions) { picked = extensions; };
    OpenPicker(picker, screen);
  }
  ~ExtPickerTest() override { CurrentWindowSettings = {}; }
  void Run(PickerCommand command) { RunPickerCommand(picker, screen, command); }
  // The rows as they are shown, those that are ticked with a plus.
  std::u16string Shown() const {
    std::u16string all;
    for (const PickerRow& row : screen.rows) {
      all += (all.empty() ? u"" : u" ") + std::u16string(row.isTicked ? u"+" : u"") + row.extension;
    }
    return all;
  }
  void Untick() {
    for (size_t row = 0; row < picker.rows.size(); ++row) TickRow(picker, row, false);
  }

  ScratchConfig config;
  ExtPicker picker;
  RecordingPicker screen;
  Extensions picked;
};

TEST_F(ExtPickerTest, TicksAllAtFirst) { EXPECT_EQ(Shown(), u"+.txt +.md +.log"); }

TEST_F(ExtPickerTest, TicksWhatWasPickedLast) {
  CurrentWindowSettings.contentSearchExts = {u".MD", u".gone"};
  OpenPicker(picker, screen);
  EXPECT_EQ(Shown(), u".txt +.md .log");
}

TEST_F(ExtPickerTest, AddsExtensionsTickedAndSavesThem) {
  Untick();
  screen.field = u"pdf, .MD,docx";
  Run(PickerCommand::kAdd);
  EXPECT_EQ(Shown(), u".txt +.md .log +.pdf +.docx");
  EXPECT_EQ(LoadPickerExts(), (Extensions{u".txt", u".md", u".log", u".pdf", u".docx"}));
  EXPECT_EQ(screen.field, u"");
  EXPECT_FALSE(screen.isClosed);
}

TEST_F(ExtPickerTest, TellsWhatToEnterWhereNothingIsEntered) {
  screen.field = u" , ";
  Run(PickerCommand::kAdd);
  EXPECT_EQ(screen.told, Extensions{u"Enter extensions, e.g. .pdf or pdf,docx"});
  EXPECT_EQ(screen.field, u" , ");
}

TEST_F(ExtPickerTest, DeletesTheTickedAfterAQuestion) {
  TickRow(picker, 1, false);
  screen.selected = {1};
  screen.saysYes = false;
  Run(PickerCommand::kDelete);
  ASSERT_EQ(screen.asked.size(), 1u);
  EXPECT_EQ(screen.asked[0],
            u"Delete the selected extensions from the list?\n(This also updates the config file.)");
  EXPECT_EQ(LoadPickerExts().size(), 3u);
  screen.saysYes = true;
  Run(PickerCommand::kDelete);
  EXPECT_EQ(Shown(), u".md");
  EXPECT_EQ(LoadPickerExts(), Extensions{u".md"});
}

TEST_F(ExtPickerTest, DeletesTheSelectedWhereNoneIsTicked) {
  Untick();
  screen.selected = {0, 2, 9};
  Run(PickerCommand::kDelete);
  EXPECT_EQ(Shown(), u".md");
}

TEST_F(ExtPickerTest, TellsThatNothingIsChosenToBeDeleted) {
  Untick();
  Run(PickerCommand::kDelete);
  EXPECT_EQ(screen.told, Extensions{u"Check or select extensions to delete first."});
  EXPECT_TRUE(screen.asked.empty());
}

TEST_F(ExtPickerTest, AnEmptyListGetsTheDefaultsBack) {
  Run(PickerCommand::kDelete);
  EXPECT_EQ(Shown(), u"+.txt +.log +.md +.csv +.json +.xml +.html +.htm");
}

TEST_F(ExtPickerTest, TicksAllAndInverts) {
  TickRow(picker, 0, false);
  Run(PickerCommand::kInvert);
  EXPECT_EQ(Shown(), u"+.txt .md .log");
  Run(PickerCommand::kAll);
  EXPECT_EQ(Shown(), u"+.txt +.md +.log");
  TickRow(picker, 99, false);
  EXPECT_EQ(picker.rows, screen.rows);
}

TEST_F(ExtPickerTest, ReadsItsFileAgainWhenTheUserComesBack) {
  ActivatePicker(picker, screen);
  EXPECT_EQ(screen.fills, 1) << "nothing was edited";
  TickRow(picker, 0, false);
  Run(PickerCommand::kConfig);
  ActivatePicker(picker, screen);
  EXPECT_EQ(screen.fills, 1) << "not edited yet";
  EXPECT_EQ(screen.opened, Extensions{ConfigPath(u"content_search_exts.ini")});
  ASSERT_TRUE(WriteTextFile(ConfigPath(u"content_search_exts.ini"), u"exts=.txt,.md,.new\n"));
  ActivatePicker(picker, screen);
  EXPECT_EQ(Shown(), u".txt +.md +.new");
  ActivatePicker(picker, screen);
  EXPECT_EQ(screen.fills, 2);
}

TEST_F(ExtPickerTest, GivesTheTickedAndCloses) {
  TickRow(picker, 0, false);
  Run(PickerCommand::kAccept);
  EXPECT_TRUE(screen.isClosed);
  EXPECT_EQ(picked, (Extensions{u".md", u".log"}));
}

TEST_F(ExtPickerTest, StaysWhereNoneIsTicked) {
  Untick();
  Run(PickerCommand::kAccept);
  EXPECT_EQ(screen.told, Extensions{u"Please check at least one extension."});
  EXPECT_FALSE(screen.isClosed);
  EXPECT_TRUE(picked.empty());
}

TEST_F(ExtPickerTest, ACancelChangesNothing) {
  TickRow(picker, 0, false);
  Run(PickerCommand::kCancel);
  EXPECT_TRUE(screen.isClosed);
  EXPECT_TRUE(picked.empty());
}

}  // namespace
}  // namespace quilmark
