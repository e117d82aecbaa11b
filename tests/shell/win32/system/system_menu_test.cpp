#include "shell/win32/system/system_menu.h"

#include <gtest/gtest.h>

#include "shell/win32/controls/control_window.h"
#include "support/scratch_folder.h"

namespace quilmark {
namespace {

TEST(SystemMenu, TakesNoMessageWhileItIsClosed) {
  for (const int message : {WM_INITMENUPOPUP, WM_MENUCHAR, WM_DRAWITEM, WM_MEASUREITEM, WM_PAINT}) {
    EXPECT_FALSE(OfferToSystemMenu(static_cast<UINT>(message), 0, 0).has_value());
  }
}

// Comes back at once, and has opened nothing.
TEST(SystemMenu, IsNotOpenedForFilesThatAreGone) {
  const ScratchFolder folder;
  const ControlWindow window(96);
  OpenSystemMenu(window.Handle(), {10, 10}, {});
  OpenSystemMenu(window.Handle(), {10, 10}, {folder.PathOf(u"nothing"), u"?:\\no path"});
  EXPECT_FALSE(OfferToSystemMenu(WM_MENUCHAR, 0, 0).has_value());
}

// What comes while the menu is open, of the window that it belongs to.
HHOOK Hook = nullptr;
int Opened = 0;

// Closes the first menu that opens, as Escape does.
LRESULT CALLBACK EndMenus(int code, WPARAM wParam, LPARAM lParam) {
  if (code == MSGF_MENU && Opened++ == 0) EndMenu();
  return CallNextHookEx(Hook, code, wParam, lParam);
}

TEST(SystemMenu, OpensForFilesAndEndsWithoutAChoice) {
  const ScratchFolder folder;
  folder.MakeFile("a.txt", "x");
  folder.MakeFile("b.txt", "x");
  const ControlWindow window(96);
  ShowWindow(window.Handle(), SW_SHOW);
  Opened = 0;
  Hook = SetWindowsHookExW(WH_MSGFILTER, EndMenus, nullptr, GetCurrentThreadId());
  ASSERT_NE(Hook, nullptr);
  // The loop of the menu looks at messages: there is one.
  PostMessageW(window.Handle(), WM_MOUSEMOVE, 0, 0);
  OpenSystemMenu(window.Handle(), {10, 10}, {folder.PathOf(u"a.txt"), folder.PathOf(u"b.txt")});
  UnhookWindowsHookEx(Hook);
  EXPECT_GT(Opened, 0);
  EXPECT_FALSE(OfferToSystemMenu(WM_MENUCHAR, 0, 0).has_value());
}

}  // namespace
}  // namespace quilmark
