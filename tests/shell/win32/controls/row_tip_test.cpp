#include "shell/win32/controls/row_tip.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include "shell/win32/controls/control_window.h"
#include "shell/win32/controls/controls.h"

namespace quilmark {
namespace {

HWND FoundTip = nullptr;

BOOL CALLBACK TakeTip(HWND window, LPARAM) {
  if (ClassOf(window) == u"tooltips_class32") FoundTip = window;
  return TRUE;
}

HWND TipOfThread() {
  FoundTip = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), TakeTip, 0);
  return FoundTip;
}

// A tip has a copy of its font.
LONG HeightOf(HFONT font) {
  LOGFONTW made = {};
  GetObjectW(font, sizeof made, &made);
  return made.lfHeight;
}

TEST(RowTip, ShowsATextInTheColoursAndTheFontOfItsContext) {
  for (const uint32_t dpi : {96u, 192u}) {
    SCOPED_TRACE(dpi);
    ControlWindow window(dpi);
    const ViewContext context = window.Context();
    const HFONT font = window.Fonts().Of(FontRole::kMain);
    RowTip tip;
    tip.Open(window.Handle());
    tip.Show(u"C:\\a path that is told", context, font);
    const HWND shown = TipOfThread();
    ASSERT_NE(shown, nullptr);
    EXPECT_TRUE(tip.IsShown());
    EXPECT_TRUE(IsWindowVisible(shown));
    EXPECT_EQ(HeightOf(FontOf(shown)), HeightOf(font));
    EXPECT_EQ(static_cast<Color>(SendMessageW(shown, TTM_GETTIPBKCOLOR, 0, 0)),
              context.palette.cardBackground);
    EXPECT_EQ(static_cast<Color>(SendMessageW(shown, TTM_GETTIPTEXTCOLOR, 0, 0)), context.palette.text);
    EXPECT_EQ(SendMessageW(shown, TTM_GETMAXTIPWIDTH, 0, 0), context.Scaled(600));
    tip.Show(u"", context, font);
    EXPECT_FALSE(tip.IsShown());
    EXPECT_FALSE(IsWindowVisible(shown));
  }
}

}  // namespace
}  // namespace quilmark
