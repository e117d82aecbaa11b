// How long our own work on one frame takes, with thirty rows in view, whatever the length of the list.
#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "config/palette.h"
#include "window/window_program.h"

namespace quilmark {
namespace {

constexpr int kRuns = 9, kFiles = 100, kWidth = 1'560, kHeight = 1'520;
constexpr uint32_t kFrames = 20, kShort = 100, kLong = 10'000'000;

double FrameMs(WindowProgram& program, Probe probe = Probe::kTimePaints) {
  std::vector<int64_t> runs;
  for (int run = 0; run < kRuns; ++run) runs.push_back(program.Ask(probe, kFrames));
  std::sort(runs.begin(), runs.end());
  return static_cast<double>(runs[kRuns / 2]) / 1'000;
}

// The search has nothing more to show, and takes no rows away.
void WaitForCount(WindowProgram& program, const std::u16string& count) {
  constexpr int kFirstTagId = 200;
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: " + count);
  WaitUntil("the counts", [&] {
    return program.TextOf(GetDlgItem(program.Window(), kFirstTagId)) == u"All Files\r\n(" + count + u")";
  });
}

// True when the line below the thirtieth row is on the frame that was timed.
bool ShowsThirtyRows(WindowProgram& program) {
  constexpr int kRows = 30, kPitch = 44, kHeader = 40, kX = 40;
  const auto line = static_cast<uint32_t>(program.Ask(Probe::kHeaderTop) + kHeader + kRows * kPitch - 1);
  return program.Ask(Probe::kPixel, kX + 65'536 * line) == ThemeDefaults(false).border;
}

void Report(WindowProgram& program, const char* what) {
  // Higher than the screen: the size is only told to the window, which paints into its own bitmap.
  SendMessageW(program.Window(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(kWidth, kHeight));
  program.Ask(Probe::kFillRows, kShort);
  const double few = FrameMs(program);
  if (!ShowsThirtyRows(program)) {
    std::printf("%s: fewer than thirty rows in view\n", what);
    return;
  }
  program.Ask(Probe::kFillRows, kLong);
  const double many = FrameMs(program);
  program.Ask(Probe::kShowRow, kLong / 2);
  const double middle = FrameMs(program);
  if (program.Ask(Probe::kRows) != kLong) {
    std::printf("%s: other rows came meanwhile\n", what);
    return;
  }
  const double hover = FrameMs(program, Probe::kTimeHovers);
  std::printf(
      "%-16s %u rows %6.2f ms   %u rows %6.2f ms (%.2fx)   in their middle %6.2f ms (%.2fx)"
      "   two rows, to the screen %6.2f ms\n",
      what, kShort, few, kLong, many, many / few, middle, middle / few, hover);
}

void ReportAll() {
  WindowProgram program;
  for (int file = 0; file < kFiles; ++file) {
    program.Drive().MakeFile("a folder of some files/another report-" + std::to_string(file) + ".txt");
  }
  program.StartAndWait();
  program.SearchFor(u"report");
  WaitUntil("sizes and dates", [&program] { return program.Ask(Probe::kFirstRowSize) >= 0; });
  WaitForCount(program, u"100");
  Report(program, "one hit a name");
  program.PressCtrl(u'A');
  program.SearchFor(u"o");
  WaitForCount(program, u"101");
  Report(program, "three hits");
  program.PressCtrl(u'A');
  program.Press(VK_DELETE);
  WaitUntil("no results", [&program] { return program.Ask(Probe::kRows) == 0; });
  WaitForCount(program, u"0");
  Report(program, "no hits");
  program.Exit();
  program.WaitForEnd();
}

}  // namespace
}  // namespace quilmark

int main() {
  quilmark::ReportAll();
  return 0;
}
