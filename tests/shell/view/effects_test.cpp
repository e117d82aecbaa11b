#include "shell/view/effects.h"

#include <gtest/gtest.h>

namespace quilmark {
namespace {

TEST(Effects, AskForNothingByThemselves) {
  Effects effects;
  EXPECT_TRUE(effects.isTaken);
  effects.Join({});
  EXPECT_FALSE(effects.relayout || effects.placesControls || effects.syncsBars || effects.rehovers ||
               effects.tracksMouse || effects.paintsNow);
  EXPECT_EQ(effects.editor, Editor::kKeep);
  EXPECT_EQ(effects.capture, Capture::kKeep);
  EXPECT_EQ(effects.focus, Focus::kKeep);
  EXPECT_FALSE(effects.tip);
  EXPECT_TRUE(IsEmpty(effects.dirty));
}

TEST(Effects, AreAllCarriedOutThatAreJoined) {
  Effects effects{.relayout = true, .syncsBars = true, .dirty = {0, 0, 10, 10}};
  effects.Join({.placesControls = true,
                .rehovers = true,
                .tracksMouse = true,
                .dirty = {20, 5, 30, 40},
                .paintsNow = true});
  EXPECT_TRUE(effects.relayout && effects.placesControls && effects.syncsBars && effects.rehovers &&
              effects.tracksMouse && effects.paintsNow);
  EXPECT_EQ(effects.dirty, (Rect{0, 0, 30, 40}));
}

TEST(Effects, TheLaterOnesCountWhereBothAskForTheSame) {
  Effects effects{
      .editor = Editor::kClose, .capture = Capture::kTake, .focus = Focus::kWindow, .tip = u"before"};
  effects.Join({.editor = Editor::kOpen,
                .editorPlace = EditorPlace{.text = u"name"},
                .capture = Capture::kRelease,
                .focus = Focus::kEditor,
                .tip = u""});
  EXPECT_EQ(effects.editor, Editor::kOpen);
  ASSERT_TRUE(effects.editorPlace);
  EXPECT_EQ(effects.editorPlace->text, u"name");
  EXPECT_EQ(effects.capture, Capture::kRelease);
  EXPECT_EQ(effects.focus, Focus::kEditor);
  EXPECT_EQ(effects.tip, u"");
}

TEST(Effects, KeepWhatTheLaterOnesDoNotAskFor) {
  Effects effects{.editor = Editor::kMove,
                  .editorPlace = EditorPlace{.place = {1, 2, 3, 4}},
                  .capture = Capture::kTake,
                  .focus = Focus::kSearchBox,
                  .tip = u"text"};
  effects.Join({.relayout = true});
  EXPECT_EQ(effects.editor, Editor::kMove);
  ASSERT_TRUE(effects.editorPlace);
  EXPECT_EQ(effects.editorPlace->place, (Rect{1, 2, 3, 4}));
  EXPECT_EQ(effects.capture, Capture::kTake);
  EXPECT_EQ(effects.focus, Focus::kSearchBox);
  EXPECT_EQ(effects.tip, u"text");
}

TEST(Effects, AreTakenIfOneOfThemIs) {
  Effects effects{.isTaken = false};
  effects.Join({.isTaken = false});
  EXPECT_FALSE(effects.isTaken);
  effects.Join({});
  EXPECT_TRUE(effects.isTaken);
}

}  // namespace
}  // namespace quilmark
