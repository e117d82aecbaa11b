// One run of the program: its own settings and drive, its window asked, typed into and looked at.
#pragma once

#include <windows.h>

#include <functional>
#include <string>

#include "support/environment.h"
#include "support/scratch_folder.h"
#include "window/program/probe.h"

namespace quilmark {

// Waits for a state and never for a time; a state that does not come within a minute fails the test.
bool WaitUntil(const std::string& what, const std::function<bool()>& holds);

// Returns at once unless the day ends within 50 seconds, and then on the next: what a test makes is of
// today while it looks at it.
void WaitPastMidnight();

// A message box of that title, once it takes the keys of the keyboard: before it does they go elsewhere.
HWND WaitForBox(const wchar_t* title);

class WindowProgram {
 public:
  // The folder of drive T: and that of the settings, to be filled before Start.
  const ScratchFolder& Drive() const { return drive_; }
  const ScratchFolder& Settings() const { return settings_; }

  WindowProgram() = default;
  ~WindowProgram();  // ends what still runs; keeps screenshot and logs of a failed test
  WindowProgram(const WindowProgram&) = delete;
  WindowProgram& operator=(const WindowProgram&) = delete;

  void Start(const std::wstring& arguments = L"");
  // Starts, and waits until the drive is searchable and the window as it stays.
  void StartAndWait(const std::wstring& arguments = L"");
  // Waits until the window is in front and its search box has the focus.
  void TakeKeyboard();
  // Another copy over the same settings; its exit code.
  DWORD RunSecondCopy(const std::wstring& arguments = L"");
  // The exit of the tray's menu.
  void Exit();
  // The exit code, waiting for the end.
  DWORD WaitForEnd();
  bool IsRunning() const;

  HWND Window();  // waits for it
  HWND SearchBox() { return GetDlgItem(Window(), 101); }
  HWND ScopeBox() { return GetDlgItem(Window(), 104); }
  int64_t Ask(Probe probe, uint32_t argument = 0);
  std::u16string Title();
  void ExpectTitle(std::u16string_view title);  // waits for it
  std::u16string Status();
  std::u16string TextOf(HWND control);
  bool IsVisible() { return IsWindowVisible(Window()) != FALSE; }

  // Keys of the keyboard, one after another: letters, digits and blanks.
  void Type(std::u16string_view text);
  void Press(WORD virtualKey);
  void PressCtrl(WORD virtualKey);
  void KeyDown(WORD virtualKey);
  void KeyUp(WORD virtualKey);
  void Click(HWND window, int x, int y);  // client pixels, as all of these
  // The same while a key is held.
  void ClickWith(WORD key, HWND window, int x, int y);
  void ClickRight(int x, int y);  // over the main window
  void Drag(HWND window, POINT from, POINT to);
  void MoveMouse(int x, int y);              // over the main window
  void Turn(POINT at, int notches);          // the wheel over the main window; negative towards the user
  void SearchFor(std::u16string_view text);  // types, enters, and waits for the final results
  void WaitForResults();                     // those of the latest search

  // That of the first date, by its button.
  void OpenCalendar();
  void CloseCalendar();

  // build/windows/window-tests/<name>.png
  void Screenshot(const std::string& name);

  std::u16string GdiLog() const;  // the lines of this run
  std::u16string MetricsLog() const;

 private:
  ScratchFolder drive_, settings_, temp_;
  // What the program inherits. B: is empty for good: without any letter of its own it would see those of
  // the machine.
  ScopedEnvironment configVariable_{"QUILMARK_CONFIG_DIR", settings_.HostPath().string()};
  ScopedEnvironment drivesVariable_{
      kDrivesVariable, "T=" + drive_.HostPath().string() + ";B=" + drive_.HostPath().string() + "/none"};
  ScopedEnvironment tempVariable_{"TEMP", temp_.HostPath().string()};
  ScopedEnvironment tmpVariable_{"TMP", temp_.HostPath().string()};
  PROCESS_INFORMATION process_ = {};
  HWND window_ = nullptr;
};

}  // namespace quilmark
