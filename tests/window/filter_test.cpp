#include <windows.h>

#include <gtest/gtest.h>

#include "search/filter/filter_categories.h"
#include "window/window_program.h"

namespace quilmark {
namespace {

class FilterBar : public testing::Test {
 protected:
  FilterBar() {
    WaitPastMidnight();
    program.Drive().MakeFile("mix/mix-letter.txt", "text");
    program.Drive().MakeFile("mix/mix-photo.jpg", std::string(2'000'000, 'x'));
    program.Drive().MakeFile("mix/mix-other.bin", "x");
    program.StartAndWait();
    program.SearchFor(u"mix");
  }
  ~FilterBar() override {
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
  }
  HWND Tag(int index) { return GetDlgItem(program.Window(), 200 + index); }
  void ClickTag(int index) {
    RECT client = {};
    GetClientRect(Tag(index), &client);
    program.Click(Tag(index), client.right / 2, client.bottom / 2);
  }
  void WaitForRows(int64_t count) {
    WaitUntil("the filtered rows", [&] { return program.Ask(Probe::kRows) == count; });
  }
  // As a user's choice in the list would.
  void Choose(int combo, int item) {
    SendMessageW(GetDlgItem(program.Window(), combo), CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageW(program.Window(), WM_COMMAND, MAKEWPARAM(combo, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(GetDlgItem(program.Window(), combo)));
  }

  WindowProgram program;
};

// In the window of a drop list, near its lower left corner, where no text stands.
COLORREF ListColor(HWND combo) {
  RECT place = {};
  GetWindowRect(combo, &place);
  const HDC screen = GetDC(nullptr);
  const COLORREF color = GetPixel(screen, place.left + 4, place.bottom + 100);
  ReleaseDC(nullptr, screen);
  return color;
}

TEST_F(FilterBar, RecoloursItsListsWithTheTheme) {
  constexpr COLORREF kLight = 0xFFFFFF, kDark = 0x30221E;  // blue first
  const HWND combo = GetDlgItem(program.Window(), 107);
  for (const COLORREF color : {kLight, kDark}) {
    SendMessageW(combo, CB_SHOWDROPDOWN, TRUE, 0);
    WaitUntil("its colour", [&] { return ListColor(combo) == color; });
    SendMessageW(combo, CB_SHOWDROPDOWN, FALSE, 0);
    program.Ask(Probe::kSwitchTheme, 1);
  }
}

TEST_F(FilterBar, DropsItsListsInThePalette) {
  program.Ask(Probe::kSwitchTheme, 1);
  const HWND combo = GetDlgItem(program.Window(), 107);
  program.Click(combo, 20, 18);
  WaitUntil("the list", [combo] { return SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0) != 0; });
  program.Press(VK_DOWN);
  WaitForRows(3);  // today: the files
  EXPECT_NE(SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0), 0) << "the list stays for the next key";
  program.Screenshot("drop-list-dark");
  program.Press(VK_RETURN);
  WaitUntil("its end", [combo] { return SendMessageW(combo, CB_GETDROPPEDSTATE, 0, 0) == 0; });
}

TEST_F(FilterBar, TakesACustomSize) {
  Choose(106, 4);
  WaitUntil("the size box",
            [this] { return IsWindowVisible(GetDlgItem(program.Window(), 108)) != FALSE; });
  program.Click(GetDlgItem(program.Window(), 108), 20, 18);
  program.Type(u"1-3");
  WaitForRows(1);
  const int64_t before = program.Ask(Probe::kFilterGeneration);
  Choose(107, 4);  // from today to today: the files have just been made
  EXPECT_GT(program.Ask(Probe::kFilterGeneration), before);
  WaitUntil("the dates", [this] { return IsWindowVisible(GetDlgItem(program.Window(), 112)) != FALSE; });
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: 1");
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("custom-ranges");
  program.Ask(Probe::kSwitchTheme, 1);
  program.Screenshot("custom-ranges-dark");
  program.OpenCalendar();
  program.Screenshot("calendar-dark");
  program.CloseCalendar();
  EXPECT_FALSE(IsWindowVisible(GetDlgItem(program.Window(), 109)));
}

TEST_F(FilterBar, KeepsItsChoicesForTheNextRun) {
  Choose(106, 1);
  WaitForRows(2);
  program.Exit();
  EXPECT_EQ(program.WaitForEnd(), 0u);
  program.StartAndWait();
  EXPECT_EQ(SendMessageW(GetDlgItem(program.Window(), 106), CB_GETCURSEL, 0, 0), 1);
  program.SearchFor(u"mix");
  WaitForRows(2);
}

TEST_F(FilterBar, HasTheDefaultOfATimeRangeInItsHiddenBox) {
  const HWND box = GetDlgItem(program.Window(), 109);
  EXPECT_EQ(program.TextOf(box), u"0-7(days ago)");
  EXPECT_FALSE(IsWindowVisible(box));
}

TEST_F(FilterBar, StandsAtTheSideOnRequest) {
  program.Ask(Probe::kSetSidebar, 1);
  EXPECT_EQ(program.Ask(Probe::kHeaderTop), 70);
  EXPECT_FALSE(IsWindowVisible(Tag(0)));
  program.Click(program.Window(), 100, 70 + 8 + 2 * 52 + 22);  // the third row: Documents
  WaitForRows(1);
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("sidebar");
  // Low: three rows fit. The wheel over them moves them by whole rows and never the list, which could
  // move too.
  program.Ask(Probe::kFillRows, 1'000);
  SetWindowPos(program.Window(), nullptr, 0, 0, 900, 260, SWP_NOMOVE | SWP_NOZORDER);
  WaitUntil("a low window", [this] { return program.Ask(Probe::kClientHeight) < 260; });
  constexpr uint32_t kSidebarBar = 117;
  EXPECT_EQ(program.Ask(Probe::kBarLimit, kSidebarBar), 8 - 3);
  program.Turn({100, 120}, -2);
  WaitUntil("two rows further", [this] { return program.Ask(Probe::kBarPosition, kSidebarBar) == 2; });
  EXPECT_EQ(program.Ask(Probe::kScrollY), 0);
  program.Turn({500, 150}, -2);
  WaitUntil("a way for the list", [this] { return program.Ask(Probe::kScrollY) == 200; });
  EXPECT_EQ(program.Ask(Probe::kBarPosition, kSidebarBar), 2);
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("sidebar-low");
  program.Click(program.Window(), 100, 70 + 8 + 52 + 22);  // the fourth row has come to the second place
  WaitUntil("the images",
            [this] { return program.Title().starts_with(u"Quilmark - Filter: Images | Hits: "); });
  program.Ask(Probe::kSetSidebar, 0);
  EXPECT_TRUE(IsWindowVisible(Tag(0)));
}

}  // namespace
}  // namespace quilmark
