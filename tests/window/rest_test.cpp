// Every screen left alone for two seconds: nothing is painted, started, read or written.
#include <windows.h>

#include <gtest/gtest.h>

#include <filesystem>

#include "window/results_list.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

struct Activity {
  int64_t paints = 0, threads = 0, reads = 0, writes = 0;
  bool operator==(const Activity&) const = default;
};

class Rest : public ListProgram {
 protected:
  static constexpr int kFiles = 60;
  static constexpr WPARAM kAutosaveTimer = 30'009, kPrewarmTimer = 30'006;

  Rest() {
    for (int i = 10; i < 10 + kFiles; ++i) {
      program.Drive().MakeFile("docs/file-" + std::to_string(i) + ".txt", "x");
    }
    program.StartAndWait();
    // What a start does seconds later, once: at once.
    SendMessageW(program.Window(), WM_TIMER, kPrewarmTimer, 0);
  }
  void ShowRows() {
    program.SearchFor(u"file");
    WaitForRows(kFiles);
    WaitUntil("the size of the first row", [this] { return program.Ask(Probe::kFirstRowSize) >= 0; });
  }
  Activity Look() {
    return {program.Ask(Probe::kPaintMessages), program.Ask(Probe::kThreadsStarted),
            program.Ask(Probe::kDiskReads), program.Ask(Probe::kDiskWrites)};
  }
  // The work of what came before ends by itself: half a second without any is the sign.
  void WaitForTheEndOfWork() {
    constexpr ULONGLONG kQuietMs = 500;
    Activity last = Look();
    ULONGLONG since = GetTickCount64();
    WaitUntil("an end of all work", [&] {
      SendMessageW(program.Window(), WM_TIMER, kAutosaveTimer, 0);  // not within the two seconds
      const Activity now = Look();
      const bool isQuiet = now == last && program.Ask(Probe::kAttributesSaved) == 1;
      if (!isQuiet) since = GetTickCount64();
      last = now;
      return isQuiet && GetTickCount64() - since >= kQuietMs;
    });
  }
  void ExpectRest(const char* screen) {
    SCOPED_TRACE(screen);
    WaitForTheEndOfWork();
    const Activity before = Look();
    Sleep(2'000);  // what is tested is that time does nothing
    const Activity after = Look();
    EXPECT_EQ(after.paints - before.paints, 0);
    EXPECT_EQ(after.threads - before.threads, 0);
    EXPECT_EQ(after.reads - before.reads, 0);
    EXPECT_EQ(after.writes - before.writes, 0);
  }
};

TEST_F(Rest, IsThatOfTheListAndOfTheEmptyState) {
  ExpectRest("nothing typed");
  ShowRows();
  ExpectRest("the list");
  for (const uint32_t view : {1u, 2u}) {
    program.Ask(Probe::kSetView, view);
    ExpectRest(view == 1 ? "small icons" : "large icons");
  }
  program.Ask(Probe::kSetView, 0);
  program.PressCtrl(u'A');
  program.SearchFor(u"qqqq");
  ExpectRest("nothing found");
}

TEST_F(Rest, IsThatOfTheFiltersAndTheirPopups) {
  ShowRows();
  program.Ask(Probe::kSetSidebar, 1);
  ExpectRest("filters at the side");
  Choose(106, 4);
  Choose(107, 4);
  const HWND from = GetDlgItem(program.Window(), 111);
  WaitUntil("the dates", [&] { return IsWindowVisible(from) != FALSE; });
  ExpectRest("custom ranges");
  const HWND presets = GetDlgItem(program.Window(), 107);
  program.Click(presets, 20, 18);
  WaitUntil("the list", [&] { return SendMessageW(presets, CB_GETDROPPEDSTATE, 0, 0) != 0; });
  ExpectRest("a drop list");
  program.Press(VK_ESCAPE);
  WaitUntil("its end", [&] { return SendMessageW(presets, CB_GETDROPPEDSTATE, 0, 0) == 0; });
  program.OpenCalendar();
  ExpectRest("a calendar");
}

TEST_F(Rest, IsThatOfTheRenameEditor) {
  ShowRows();
  OpenEditor(3);
  ExpectRest("the editor");
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
}

TEST_F(Rest, IsThatOfAHiddenWindow) {
  ShowRows();
  program.Ask(Probe::kSetTrayIcon, 1);
  PostMessageW(program.Window(), WM_CLOSE, 0, 0);
  WaitUntil("no window", [this] { return !program.IsVisible(); });
  ExpectRest("hidden");
}

TEST_F(Rest, IsThatOfRowsThatAreGone) {
  ASSERT_TRUE(fs::remove(program.Drive().HostPath() / "docs" / "file-12.txt"));
  ASSERT_TRUE(fs::remove(program.Drive().HostPath() / "docs" / "file-69.txt"));
  program.SearchFor(u"file");
  WaitForRows(kFiles);
  program.Ask(Probe::kDeleteRow, 4);
  program.Ask(Probe::kRepaint, 1);
  ExpectRest("the first rows");
  TurnAtOnce(-100 * WHEEL_DELTA);
  program.Ask(Probe::kDeleteRow, kFiles - 2);
  program.Ask(Probe::kRepaint, 1);
  ExpectRest("the last rows");
}

}  // namespace
}  // namespace quilmark
