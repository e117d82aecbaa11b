#include "shell/win32/controls/name_editor.h"

#include <gtest/gtest.h>

#include "shell/win32/controls/control_window.h"
#include "shell/win32/controls/controls.h"
#include "support/object_counts.h"

namespace quilmark {
namespace {

constexpr int kBox = 101;
const EditorPlace kPlace = {.place = {60, 100, 340, 144}, .text = u"annals.txt", .selected = 6};

size_t ChildrenOf(HWND window) {
  size_t count = 0;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr;
       child = GetWindow(child, GW_HWNDNEXT)) {
    ++count;
  }
  return count;
}

class NameEditorTest : public testing::Test {
 protected:
  NameEditorTest() {
    const ControlSpec box = {.kind = ControlKind::kSearchBox, .id = kBox};
    window.Make({&box, 1});
    const ControlPlace place = {kBox, {10, 10, 300, 44}};
    window.controls.Place({&place, 1});
  }
  void Open() { editor.Open(window.Handle(), kPlace, window); }
  LRESULT Selection() const { return SendMessageW(editor.Handle(), EM_GETSEL, 0, 0); }
  void ExpectTold(ControlEvent::Kind kind, std::u16string_view text) {
    const std::vector<ControlEvent> told = {
        {.kind = kind, .id = NameEditor::kId, .text = std::u16string(text)}};
    EXPECT_EQ(window.TakeEvents(), told);
  }
  // At each of its ends.
  void CloseWhenTold() {
    window.answer = [this](const ControlEvent&) {
      editor.Close();
      return true;
    };
  }

  ControlWindow window;
  NameEditor editor;
};

TEST_F(NameEditorTest, OpensWithTheFocusAndTheStemSelected) {
  EXPECT_FALSE(editor.IsOpen());
  Open();
  ASSERT_TRUE(editor.IsOpen());
  EXPECT_TRUE(editor.HasFocus());
  EXPECT_EQ(TextOf(editor.Handle()), u"annals.txt");
  EXPECT_EQ(FromRECT(RectInParent(editor.Handle())), kPlace.place);
  EXPECT_EQ(FontOf(editor.Handle()), window.Fonts().Of(FontRole::kList));
  EXPECT_EQ(Selection(), MAKELRESULT(0, 6));
  EXPECT_TRUE(window.TakeEvents().empty());
}

TEST_F(NameEditorTest, KeepsItsTextWhereItIsOpenedOnceMore) {
  Open();
  const HWND former = editor.Handle();
  Type(former, u"Index");
  window.controls.Focus(kBox);
  window.TakeEvents();
  Open();
  EXPECT_EQ(editor.Handle(), former);
  EXPECT_TRUE(editor.HasFocus());
  EXPECT_EQ(TextOf(former), u"Index.txt");
  EXPECT_EQ(Selection(), MAKELRESULT(0, 9));
}

TEST_F(NameEditorTest, TellsOfEnterAndTab) {
  Open();
  Type(editor.Handle(), u"Index");
  for (const WPARAM key : {WPARAM{VK_RETURN}, WPARAM{VK_TAB}}) {
    Press(editor.Handle(), key);
    Type(editor.Handle(), key == VK_TAB ? u"\t" : u"\r");
    ExpectTold(ControlEvent::kEnter, u"Index.txt");
    EXPECT_TRUE(editor.HasFocus());
  }
}

TEST_F(NameEditorTest, TellsOfEscape) {
  Open();
  Press(editor.Handle(), VK_ESCAPE);
  ExpectTold(ControlEvent::kEscape, u"annals.txt");
  EXPECT_TRUE(editor.IsOpen());
}

TEST_F(NameEditorTest, TellsThatAnotherControlHasTheFocus) {
  Open();
  Type(editor.Handle(), u"Index");
  window.controls.Focus(kBox);
  ExpectTold(ControlEvent::kLeft, u"Index.txt");
  EXPECT_TRUE(editor.IsOpen());
  EXPECT_FALSE(editor.HasFocus());
}

TEST_F(NameEditorTest, TellsThatTheProgramIsLeft) {
  Open();
  SetFocus(nullptr);  // the program is left
  ExpectTold(ControlEvent::kLeftProgram, u"annals.txt");
  EXPECT_TRUE(editor.IsOpen());
}

TEST_F(NameEditorTest, MayBeClosedAtEachOfItsEnds) {
  CloseWhenTold();
  Open();
  Press(editor.Handle(), VK_RETURN);
  ExpectTold(ControlEvent::kEnter, u"annals.txt");
  EXPECT_FALSE(editor.IsOpen());
  Open();
  Press(editor.Handle(), VK_TAB);
  ExpectTold(ControlEvent::kEnter, u"annals.txt");
  Open();
  Press(editor.Handle(), VK_ESCAPE);
  ExpectTold(ControlEvent::kEscape, u"annals.txt");
  Open();
  window.controls.Focus(kBox);
  ExpectTold(ControlEvent::kLeft, u"annals.txt");
  EXPECT_EQ(GetDlgCtrlID(GetFocus()), kBox);
  Open();
  SetFocus(nullptr);  // the program is left
  ExpectTold(ControlEvent::kLeftProgram, u"annals.txt");
  EXPECT_FALSE(editor.IsOpen());
  EXPECT_EQ(ChildrenOf(window.Handle()), 1u);
}

TEST_F(NameEditorTest, MayBeOpenedAnewAtItsEnd) {
  window.answer = [this](const ControlEvent&) {
    window.answer = nullptr;
    editor.Close();
    Open();
    return true;
  };
  Open();
  const HWND former = editor.Handle();
  Press(former, VK_RETURN);
  ExpectTold(ControlEvent::kEnter, u"annals.txt");
  EXPECT_FALSE(IsWindow(former));
  EXPECT_TRUE(editor.HasFocus());
  EXPECT_EQ(ChildrenOf(window.Handle()), 2u);
}

TEST_F(NameEditorTest, TellsNothingOfBeingClosed) {
  Open();
  editor.Close();
  editor.Close();
  EXPECT_FALSE(editor.IsOpen());
  EXPECT_FALSE(editor.HasFocus());
  EXPECT_TRUE(window.TakeEvents().empty());
}

TEST_F(NameEditorTest, TakesNoCharacterThatWouldBreakItsLine) {
  Open();
  editor.SelectAll();
  Type(editor.Handle(), u"a\rb\tc\n");
  EXPECT_EQ(TextOf(editor.Handle()), u"abc");
}

TEST_F(NameEditorTest, MovesWithItsRow) {
  Open();
  editor.Move({60, 130, 240, 174});
  EXPECT_EQ(FromRECT(RectInParent(editor.Handle())), (Rect{60, 130, 240, 174}));
  RECT line = {};
  SendMessageW(editor.Handle(), EM_GETRECT, 0, reinterpret_cast<LPARAM>(&line));
  EXPECT_EQ(line.left, 3);
  EXPECT_EQ(line.right, 177);
  EXPECT_NEAR(line.top, 44 - line.bottom, 1);
  EXPECT_TRUE(window.TakeEvents().empty());
  editor.Close();
  editor.Move({0, 0, 10, 10});
  EXPECT_FALSE(editor.IsOpen());
}

TEST(NameEditor, EndsWithItsWindow) {
  NameEditor editor;
  {
    ControlWindow window;
    editor.Open(window.Handle(), kPlace, window);
    window.answer = [](const ControlEvent&) { return true; };
  }
  EXPECT_FALSE(editor.IsOpen());
  EXPECT_FALSE(editor.HasFocus());
}

TEST_F(NameEditorTest, LeavesNothingBehind) {
  CloseWhenTold();
  const auto open = [this] {
    Open();
    UpdateWindow(editor.Handle());
    Type(editor.Handle(), u"Index");
    Press(editor.Handle(), VK_RETURN);
    DispatchAll();
  };
  for (int warm = 0; warm < 10; ++warm) open();
  const int64_t objects = CountGdiObjects(), handles = CountHandles();
  for (int round = 0; round < 200; ++round) open();
  EXPECT_LE(CountGdiObjects(), objects + 2);
  EXPECT_LE(CountHandles(), handles + 2);
  EXPECT_EQ(ChildrenOf(window.Handle()), 1u);
}

}  // namespace
}  // namespace quilmark
