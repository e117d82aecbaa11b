// The files that were opened last, in the list of an empty search box.
#include <gtest/gtest.h>

#include "window/results_list.h"
#include "window/shell_log.h"

namespace quilmark {
namespace {

class RecentsInTheWindow : protected ShellLog, public ListProgram {
 protected:
  RecentsInTheWindow() {
    for (const char* name : {"one.txt", "two.txt", "three.txt"}) program.Drive().MakeFile(name);
    program.StartAndWait();
  }
  void Open(std::u16string_view name) {
    EmptyTheBox();
    program.SearchFor(name);
    WaitForRows(1);
    const size_t calls = ShellCalls().size();
    ClickRow(0);
    WaitForSelected(1);
    program.Press(VK_RETURN);
    WaitUntil("the call", [&] { return ShellCalls().size() > calls; });
  }
  void EmptyTheBox() {
    program.Click(program.SearchBox(), 20, 8);
    program.PressCtrl('A');
    program.Press(VK_BACK);
  }
  void WaitForPaths(const std::vector<std::u16string>& paths) {
    WaitUntil("the recent files", [&] {
      if (program.Ask(Probe::kRows) != static_cast<int64_t>(paths.size())) return false;
      for (uint32_t row = 0; row < paths.size(); ++row) {
        if (PathOf(row) != PathOnDrive(paths[row])) return false;
      }
      return true;
    });
  }
  void StartAgain() {
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
    program.Start();
    WaitUntil("a searchable drive", [this] { return program.Ask(Probe::kEngineReady) == 1; });
  }
};

TEST_F(RecentsInTheWindow, StandInAnEmptyBoxTheLatestFirst) {
  for (const auto* name : {u"one", u"two", u"one"}) Open(name);
  EmptyTheBox();
  WaitForPaths({u"one.txt", u"two.txt"});
  program.Screenshot("recents");
  StartAgain();
  WaitForPaths({u"one.txt", u"two.txt"});
}

TEST_F(RecentsInTheWindow, FollowARename) {
  Open(u"one");
  EmptyTheBox();
  WaitForPaths({u"one.txt"});
  OpenEditor(0);
  program.Type(u"uno");
  program.Press(VK_RETURN);
  WaitForNoEditor();
  WaitForPaths({u"uno.txt"});
  StartAgain();
  WaitForPaths({u"uno.txt"});
}

TEST_F(RecentsInTheWindow, AreClearedByTheMenu) {
  Open(u"one");
  EmptyTheBox();
  WaitForPaths({u"one.txt"});
  OpenMenuOver(0);
  ChooseFromTheEnd(3);
  WaitForPaths({});
  StartAgain();
  WaitUntil("the window", [this] { return IsWindowEnabled(program.SearchBox()) != FALSE; });
  EXPECT_EQ(program.Ask(Probe::kRows), 0);
}

TEST_F(RecentsInTheWindow, GoAndComeWithTheirDrive) {
  Open(u"one");
  EmptyTheBox();
  WaitForPaths({u"one.txt"});
  program.Ask(Probe::kUnmapDrive, 'T');
  WaitForPaths({});
  program.Ask(Probe::kMapDriveAgain, 'T');
  WaitForPaths({u"one.txt"});
}

}  // namespace
}  // namespace quilmark
