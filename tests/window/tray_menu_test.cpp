#include <gtest/gtest.h>

#include <filesystem>

#include "platform/text_file.h"
#include "window/window_program.h"

namespace quilmark {
namespace {

constexpr UINT kTrayMessage = 32'769;

// Wine takes a program of its own folder only where it is told to: WINEDLLOVERRIDES has
// "schtasks.exe=n".
class StandInScheduler {
 public:
  StandInScheduler() {
    wchar_t folder[MAX_PATH] = {}, program[MAX_PATH] = {};
    GetSystemDirectoryW(folder, MAX_PATH);
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    tool_ = std::filesystem::path(folder) / "schtasks.exe";
    std::filesystem::copy_file(tool_, kept_.HostPath() / "kept");
    Put(std::filesystem::path(program).parent_path() / "stand-in-tool.exe");
  }
  ~StandInScheduler() { Put(kept_.HostPath() / "kept"); }
  StandInScheduler(const StandInScheduler&) = delete;
  StandInScheduler& operator=(const StandInScheduler&) = delete;

  std::u16string Log() const { return ReadTextFile(kept_.PathOf(u"log")).value_or(u""); }

 private:
  void Put(const std::filesystem::path& from) const {
    // The library of this compiler does not copy over a file that is there. Nobody can while it still
    // runs.
    WaitUntil("a tool at rest", [&] { return CopyFileW(from.c_str(), tool_.c_str(), FALSE) != FALSE; });
  }

  ScratchFolder kept_;
  std::filesystem::path tool_;
  ScopedEnvironment log_{"QUILMARK_TEST_TOOL_LOG", (kept_.HostPath() / "log").string()};
};

bool IsMenuOpen() {
  const HWND menu = FindWindowW(L"#32768", nullptr);
  return menu != nullptr && IsWindowVisible(menu) != FALSE;
}

class TrayMenuInTheWindow : public testing::Test {
 protected:
  TrayMenuInTheWindow() { program.Drive().MakeFile("photo.jpg"); }
  void OpenMenu() {
    PostMessageW(program.Window(), kTrayMessage, 1, WM_RBUTTONUP);
    WaitUntil("the menu", IsMenuOpen);
  }
  // By the keyboard: the entry of that number.
  void Choose(int entry) {
    for (int i = 0; i < entry; ++i) program.Press(VK_DOWN);
    program.Press(VK_RETURN);
    WaitUntil("a closed menu", [] { return !IsMenuOpen(); });
  }
  StandInScheduler scheduler;
  WindowProgram program;
};

TEST_F(TrayMenuInTheWindow, TurnsAutostartOnAndOff) {
  program.StartAndWait();
  OpenMenu();
  program.Screenshot("tray-menu");
  Choose(3);
  const std::u16string query = u"/Query\n/TN\nQuilmark_AutoStart\n";
  WaitUntil("the task", [&] { return scheduler.Log().find(u"/Create") != std::u16string::npos; });
  WaitUntil("the last question", [&] { return scheduler.Log().ends_with(query); });
  EXPECT_NE(
      scheduler.Log().find(u"/Create\n/F\n/TN\nQuilmark_AutoStart\n/SC\nONLOGON\n/DELAY\n0000:15\n/"
                           u"RL\nHIGHEST\n/TR\n\""),
      std::u16string::npos);
  EXPECT_NE(scheduler.Log().find(u"Quilmark-test.exe\" -hidden\n"), std::u16string::npos);
  OpenMenu();
  Choose(3);
  WaitUntil("no task", [&] {
    return scheduler.Log().ends_with(u"/Delete\n/TN\nQuilmark_AutoStart\n/F\n" + query);
  });
  program.Exit();
  EXPECT_EQ(program.WaitForEnd(), 0u);
}

TEST_F(TrayMenuInTheWindow, EndsTheProgram) {
  program.StartAndWait();
  OpenMenu();
  Choose(5);
  EXPECT_EQ(program.WaitForEnd(), 0u);
}

}  // namespace
}  // namespace quilmark
