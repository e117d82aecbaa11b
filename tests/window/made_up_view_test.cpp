// A second view in the real window, over made-up rows: what another view of the program will need.
#include <gtest/gtest.h>

#include <vector>

#include "config/palette.h"
#include "shell/view/made_up_view.h"
#include "window/results_list.h"

namespace quilmark {
namespace {

constexpr int kBoxId = 101, kBarId = 105,
              kMadeUpIds[] = {kMadeUpCombo, kMadeUpEdit, kMadeUpTag, kMadeUpSecondTag};
// Pixels at 96 dpi, of the lists.
constexpr int kTop = 88, kGroupPitch = 52;

class MadeUpWindow : public ListProgram {
 protected:
  static constexpr int kFiles = 60;

  MadeUpWindow() {
    for (int i = 10; i < 10 + kFiles; ++i) {
      program.Drive().MakeFile("docs/file-" + std::to_string(i) + ".txt", "x");
    }
    program.StartAndWait();
  }

  void Show(bool isMadeUp) { EXPECT_EQ(program.Ask(Probe::kShowMadeUpView, isMadeUp ? 1 : 0), 1); }
  bool IsShown(int id) { return IsWindowVisible(GetDlgItem(program.Window(), id)) != FALSE; }
  int HeightOf(int id) {
    RECT client = {};
    GetClientRect(GetDlgItem(program.Window(), id), &client);
    return client.bottom;
  }
  HWND Held() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(program.Window(), nullptr), &info);
    return info.hwndCapture;
  }
  HWND Focused() {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(program.Window(), nullptr), &info);
    return info.hwndFocus;
  }
  // On the thumb of the groups, that stands at the top.
  POINT Thumb() { return {static_cast<LONG>(program.Ask(Probe::kClientWidth)) / 2 - 8 - 5, kTop + 8}; }
  Color ColorAt(int x, int y) { return static_cast<Color>(PixelAt(x, y)); }
  // Of the whole window but the line of the status.
  std::vector<Color> Pixels() {
    program.Ask(Probe::kPaintAll);
    const int width = static_cast<int>(program.Ask(Probe::kClientWidth)),
              height = static_cast<int>(program.Ask(Probe::kClientHeight));
    std::vector<Color> pixels;
    for (int y = 3; y < height; y += 23) {
      if (y >= 60 && y < kTop) continue;
      for (int x = 3; x < width; x += 29) pixels.push_back(ColorAt(x, y));
    }
    return pixels;
  }
  void Resize(int width, int height) {
    SetWindowPos(program.Window(), nullptr, 10, 10, width, height, SWP_NOZORDER);
    WaitUntil("the new size", [&] {
      const int64_t client = program.Ask(Probe::kClientWidth);
      return client > width - 40 && client <= width;
    });
  }

  ScopedEnvironment isOffered_{kMadeUpViewVariable, "1"};
};

TEST_F(MadeUpWindow, ShowsTheControlsOfOneViewAtATime) {
  EXPECT_TRUE(IsShown(kBoxId));
  for (const int id : kMadeUpIds) EXPECT_FALSE(IsShown(id)) << id;
  Show(true);
  EXPECT_FALSE(IsShown(kBoxId));
  EXPECT_FALSE(IsShown(kFirstTag));
  for (const int id : kMadeUpIds) EXPECT_TRUE(IsShown(id)) << id;
  EXPECT_EQ(Focused(), program.Window()) << "the keys of a control that went are the window's";
  program.Press(VK_DOWN);
  program.Press(VK_DOWN);
  WaitUntil("the second group", [this] { return program.Ask(Probe::kMadeUpChosen) == 1; });
  EXPECT_EQ(program.Ask(Probe::kSelectedRows), 0);

  Show(false);
  EXPECT_TRUE(IsShown(kBoxId));
  EXPECT_TRUE(IsShown(kFirstTag));
  for (const int id : kMadeUpIds) EXPECT_FALSE(IsShown(id)) << id;
  program.Click(program.SearchBox(), 20, 10);
  program.SearchFor(u"file");
  WaitForRows(kFiles);
  EXPECT_EQ(program.Ask(Probe::kMadeUpChosen), 1);
}

TEST_F(MadeUpWindow, AFieldForADayTellsItsOwnView) {
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  EXPECT_EQ(program.Ask(Probe::kMadeUpDay) / 10'000, now.wYear);
}

TEST_F(MadeUpWindow, TheControlsAreForTheirView) {
  Show(true);
  program.Click(GetDlgItem(program.Window(), kMadeUpSecondTag), 20, 10);
  program.Click(GetDlgItem(program.Window(), kMadeUpEdit), 20, 10);
  program.Type(u"abc");
  WaitUntil("the text",
            [this] { return program.TextOf(GetDlgItem(program.Window(), kMadeUpEdit)) == u"abc"; });
  const int64_t before = program.Ask(Probe::kSearchGeneration);
  program.Press(VK_RETURN);
  WaitUntil("the keys of the window", [this] { return Focused() == program.Window(); });
  EXPECT_EQ(program.Ask(Probe::kSearchGeneration), before);
  EXPECT_EQ(program.TextOf(program.SearchBox()), u"");
}

TEST_F(MadeUpWindow, AThumbIsDragged) {
  program.SearchFor(u"file");
  WaitForRows(kFiles);
  Show(true);
  const POINT from = Thumb();
  program.Drag(program.Window(), from, {from.x, from.y + 120});
  WaitUntil("groups further down", [this] { return program.Ask(Probe::kMadeUpScrollY) > 100; });
  WaitUntil("the end of the drag", [this] { return program.Ask(Probe::kMadeUpHeldBars) == 0; });
  EXPECT_EQ(Held(), nullptr);
  EXPECT_EQ(program.Ask(Probe::kMadeUpScrollY, 1), 0);
  EXPECT_EQ(program.Ask(Probe::kBarPosition, kBarId), program.Ask(Probe::kMadeUpScrollY));
  program.Turn({100, kTop + 100}, -1);
  const int64_t dragged = program.Ask(Probe::kMadeUpScrollY);
  WaitUntil("two groups more", [&] {
    const int64_t y = program.Ask(Probe::kMadeUpScrollY);
    return y == dragged || y == dragged + 2 * kGroupPitch;
  });
  EXPECT_EQ(program.Ask(Probe::kScrollY), 0);
}

TEST_F(MadeUpWindow, AHeldThumbIsLetGoOfByASwitch) {
  program.SearchFor(u"file");
  WaitForRows(kFiles);
  Show(true);
  const POINT from = Thumb();
  SendMessageW(program.Window(), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(from.x, from.y));
  EXPECT_EQ(Held(), program.Window());
  EXPECT_EQ(program.Ask(Probe::kMadeUpHeldBars), 1);
  Show(false);
  EXPECT_EQ(Held(), nullptr);
  EXPECT_EQ(program.Ask(Probe::kMadeUpHeldBars), 0);
  SendMessageW(program.Window(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(from.x, from.y + 200));
  SendMessageW(program.Window(), WM_LBUTTONUP, 0, MAKELPARAM(from.x, from.y + 200));
  EXPECT_EQ(program.Ask(Probe::kScrollY), 0);
  EXPECT_EQ(program.Ask(Probe::kMadeUpScrollY), 0);
  EXPECT_EQ(program.Ask(Probe::kBarPosition, kBarId), 0);
}

TEST_F(MadeUpWindow, AnEditedNameEndsWithASwitch) {
  program.SearchFor(u"file");
  WaitForRows(kFiles);
  OpenEditor(2);
  program.Type(u"new");
  Show(true);
  EXPECT_EQ(Editor(), nullptr);
  EXPECT_EQ(Focused(), program.Window());
  EXPECT_TRUE(std::filesystem::exists(program.Drive().HostPath() / "docs/file-12.txt"));
  Show(false);
  EXPECT_EQ(Editor(), nullptr);
}

TEST_F(MadeUpWindow, FinalResultsThatComeBehindItPaintNothing) {
  const int64_t before = program.Ask(Probe::kShownGeneration);
  Show(true);
  program.Press(VK_DOWN);
  WaitUntil("a group", [this] { return program.Ask(Probe::kMadeUpChosen) == 0; });
  program.MoveMouse(100, kTop + 10);
  WaitUntil("the row", [this] { return program.Ask(Probe::kMadeUpHoverRow) == 0; });
  program.MoveMouse(700, 40);  // no row is under it, here and later
  WaitUntil("no row", [this] { return program.Ask(Probe::kMadeUpHoverRow) == -1; });
  const std::vector<Color> pixels = Pixels();
  Show(false);
  program.Click(program.SearchBox(), 20, 10);
  program.Type(u"file");
  WaitUntil("the text", [this] { return program.TextOf(program.SearchBox()) == u"file"; });
  Show(true);
  // The pause after the last key and the search pass behind it.
  WaitUntil("the results", [&] {
    const int64_t shown = program.Ask(Probe::kShownGeneration);
    return shown > before && shown == program.Ask(Probe::kSearchGeneration) &&
           program.Ask(Probe::kRows) == kFiles;
  });
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: 60");
  EXPECT_EQ(Pixels(), pixels);
  EXPECT_EQ(ColorAt(5, kTop - 3), ThemeDefaults(false).toolbar);
  program.Screenshot("made-up-final-results");

  Show(false);
  program.Ask(Probe::kPaintAll);
  EXPECT_GT(program.Ask(Probe::kBarLimit, kBarId), 0);
  EXPECT_EQ(ColorAt(2, MiddleOf(1)), ThemeDefaults(false).surface);
  EXPECT_NE(Pixels(), pixels);
  program.Screenshot("made-up-search-again");
}

TEST_F(MadeUpWindow, ItsTimerAndItsMessageComeBehindTheSearch) {
  SendMessageW(program.Window(), WM_TIMER, kMadeUpScanTimer, 0);
  EXPECT_EQ(program.Ask(Probe::kMadeUpScans), 1);
  const int64_t limit = program.Ask(Probe::kBarLimit, kBarId);
  SendMessageW(program.Window(), kMadeUpResults, 200, 0);
  EXPECT_EQ(program.Status(), u"Duplicates: some");
  EXPECT_EQ(program.Ask(Probe::kBarLimit, kBarId), limit) << "that of the search";
  Show(true);
  EXPECT_EQ(program.Ask(Probe::kBarLimit, kBarId),
            200 * kGroupPitch - (program.Ask(Probe::kClientHeight) - kTop));
}

TEST_F(MadeUpWindow, TakesAnotherScaleAndComesBack) {
  Show(true);
  program.Ask(Probe::kMoveAtScale, 144);
  WaitUntil("the scale", [this] { return program.Ask(Probe::kDpi) == 144; });
  EXPECT_EQ(HeightOf(kMadeUpEdit), 57);
  // The second group.
  program.Click(program.Window(), 60, (kTop + kGroupPitch) * 3 / 2 + 20);
  WaitUntil("the group", [this] { return program.Ask(Probe::kMadeUpChosen) == 1; });
  Show(false);
  EXPECT_EQ(HeightOf(kBoxId), 57);
  program.Ask(Probe::kMoveAtScale, 96);
  WaitUntil("the scale", [this] { return program.Ask(Probe::kDpi) == 96; });
  EXPECT_EQ(HeightOf(kBoxId), 38);
  Show(true);
  EXPECT_EQ(HeightOf(kMadeUpEdit), 38);
  program.Click(program.Window(), 60, kTop + 2 * kGroupPitch + 10);
  WaitUntil("the group", [this] { return program.Ask(Probe::kMadeUpChosen) == 2; });
}

TEST_F(MadeUpWindow, PicturesInBothThemesAtTwoScales) {
  Show(true);
  SendMessageW(program.Window(), kMadeUpResults, 40, 0);
  for (const int percent : {100, 150}) {
    PostMessageW(program.Window(), WM_DPICHANGED, static_cast<WPARAM>(percent * 96 / 100), 0);
    WaitUntil("the scale", [&] { return program.Ask(Probe::kDpi) == percent * 96 / 100; });
    Resize(percent * 11, percent * 7);
    const int x = 60 * percent / 100, y = (kTop + 10) * percent / 100;
    program.Click(program.Window(), x, y);
    WaitUntil("a group", [this] { return program.Ask(Probe::kMadeUpChosen) == 0; });
    program.MoveMouse(x, y + kGroupPitch * 2 * percent / 100);
    WaitUntil("the row", [this] { return program.Ask(Probe::kMadeUpHoverRow) == 2; });
    for (const bool isDark : {false, true}) {
      const Palette palette = ThemeDefaults(isDark);
      program.Ask(Probe::kRepaint, 1);
      program.Screenshot("made-up-" + std::to_string(percent) + (isDark ? "-dark" : "-light"));
      EXPECT_EQ(ColorAt(3, 3), palette.toolbar);
      EXPECT_EQ(ColorAt(static_cast<int>(program.Ask(Probe::kClientWidth)) / 2 - 3, y),
                palette.cardBackground);
      program.Ask(Probe::kSwitchTheme, 1);
    }
  }
}

}  // namespace
}  // namespace quilmark
