#include <gtest/gtest.h>

#include "config/hotkeys.h"
#include "platform/text_file.h"
#include "window/window_program.h"

namespace quilmark {
namespace {

constexpr uint32_t kCaptureShow = 20'007;
constexpr uint32_t kCtrl = 2;

// A message box of that title, or null.
HWND Box(const wchar_t* title) { return FindWindowW(L"#32770", title); }

class HotkeyCaptureInTheWindow : public testing::Test {
 protected:
  HotkeyCaptureInTheWindow() { program.Drive().MakeFile("photo.jpg"); }

  void Begin() {
    program.Ask(Probe::kChooseFromTray, kCaptureShow);
    program.ExpectTitle(u"Press a new hotkey combination (include Ctrl / Alt / Shift, Esc to cancel)");
  }
  void CloseBox(const wchar_t* title) {
    WaitForBox(title);
    program.Press(VK_RETURN);
    WaitUntil("no box", [title] { return Box(title) == nullptr; });
  }
  HotkeyConfig Saved() const {
    return ReadHotkeys(ReadTextFile(program.Settings().PathOf(u"hotkey.ini")).value_or(u""));
  }
  void End() {
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
  }

  WindowProgram program;
};

TEST_F(HotkeyCaptureInTheWindow, EscapeBringsTheTitleBack) {
  program.StartAndWait();
  const std::u16string before = program.Title();
  Begin();
  program.Press(VK_ESCAPE);
  program.ExpectTitle(before);
  End();
}

TEST_F(HotkeyCaptureInTheWindow, AKeyAloneIsRefusedAndTypesNothing) {
  program.StartAndWait();
  const std::u16string before = program.Title();
  Begin();
  program.Press('Q');
  CloseBox(L"Information");
  program.Press(VK_ESCAPE);
  program.ExpectTitle(before);
  EXPECT_EQ(program.TextOf(program.SearchBox()), u"");
  EXPECT_EQ(Saved(), HotkeyConfig());
  End();
}

TEST_F(HotkeyCaptureInTheWindow, ACombinationBecomesTheHotkey) {
  program.StartAndWait();
  Begin();
  program.PressCtrl('Q');
  CloseBox(L"Completed");
  HotkeyConfig wanted;
  wanted.showModifiers = kCtrl;
  wanted.showKey = 'Q';
  EXPECT_EQ(Saved(), wanted);
  program.PressCtrl('Q');
  WaitUntil("a hidden window", [this] { return !program.IsVisible(); });
  program.PressCtrl('Q');
  WaitUntil("a visible window", [this] { return program.IsVisible(); });
  End();
}

}  // namespace
}  // namespace quilmark
