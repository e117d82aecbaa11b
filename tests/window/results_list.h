// The results list in the window, over a drive with enough files to scroll through.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "search/filter/filters.h"
#include "window/window_program.h"

namespace quilmark {

// Not started yet.
class ListProgram : public testing::Test {
 protected:
  static constexpr int kPitch = 44, kHeader = 40;

  ~ListProgram() override {
    if (!program.IsRunning()) return;
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
  }

  int FirstRow() { return static_cast<int>(program.Ask(Probe::kHeaderTop)) + kHeader; }
  int HeaderY() { return FirstRow() - kHeader / 2; }
  int MiddleOf(int row) { return FirstRow() + row * kPitch + kPitch / 2; }
  // The middle of a row's name.
  void ClickRow(int row) { program.Click(program.Window(), 150, MiddleOf(row)); }
  int64_t Selected() { return program.Ask(Probe::kSelectedRows); }
  void WaitForSelected(int64_t count) {
    WaitUntil("the selection", [&] { return Selected() == count; });
  }
  void WaitForRows(int64_t count) {
    WaitUntil(std::to_string(count) + " rows", [&] { return program.Ask(Probe::kRows) == count; });
  }
  // The path of a row, to be compared with those of the drive.
  int64_t PathOf(uint32_t row) { return program.Ask(Probe::kRowPath, row); }
  static int64_t PathOnDrive(std::u16string_view path) {
    return CustomSizeHash(u"T:\\" + std::u16string(path));
  }
  int64_t PixelAt(int x, int y) {
    return program.Ask(Probe::kPixel, static_cast<uint32_t>(x + 65'536 * y));
  }
  // A turn of the wheel that has its effect before this returns, as far as the offset goes.
  void TurnAtOnce(int delta, WPARAM modifier = 0) { TurnOver(program.Window(), delta, modifier); }
  static void TurnOver(HWND window, int delta, WPARAM modifier = 0) {
    SendMessageW(window, WM_MOUSEWHEEL, modifier | static_cast<WPARAM>(MAKELONG(0, delta)),
                 MAKELPARAM(600, 600));
  }
  // A user's choice in a drop list; item -1: none is chosen.
  void Choose(int combo, int item) {
    const HWND box = GetDlgItem(program.Window(), combo);
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageW(program.Window(), WM_COMMAND, MAKEWPARAM(combo, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(box));
  }
  // A click that sorts, and its end.
  void ClickHeader(int x) {
    const int64_t before = program.Ask(Probe::kShownGeneration);
    program.Click(program.Window(), x, HeaderY());
    WaitUntil("the sorted rows", [&] { return program.Ask(Probe::kShownGeneration) > before; });
  }
  HWND Editor() { return reinterpret_cast<HWND>(program.Ask(Probe::kRenameEditor)); }
  HWND OpenEditor(int row) {
    ClickRow(row);
    WaitForSelected(1);
    program.Press(VK_F2);
    WaitUntil("the editor", [this] { return program.Ask(Probe::kRenameFocused) == 1; });
    return Editor();
  }
  void WaitForNoEditor() {
    WaitUntil("the end of the editor", [this] { return Editor() == nullptr; });
  }

  static bool IsMenuOpen() {
    const HWND menu = FindWindowW(L"#32768", nullptr);
    return menu != nullptr && IsWindowVisible(menu) != FALSE;
  }
  void OpenMenuAt(int x, int y) {
    program.ClickRight(x, y);
    WaitUntil("the menu", IsMenuOpen);
  }
  void OpenMenuOver(int row) { OpenMenuAt(150, MiddleOf(row)); }
  void WaitForNoMenu() {
    WaitUntil("the end of the menu", [] { return !IsMenuOpen(); });
  }
  // The entry that stands so far from the first one, or from the last one, which is 0; lines and greyed
  // entries count too where the keys stop at them.
  void ChooseEntry(int entry) { ChooseBy(VK_DOWN, entry); }
  void ChooseFromTheEnd(int entry) { ChooseBy(VK_UP, entry); }

  WindowProgram program;

 private:
  void ChooseBy(WORD key, int entry) {
    for (int i = 0; i <= entry; ++i) program.Press(key);
    program.Press(VK_RETURN);
    WaitForNoMenu();
  }
};

// Row n of "file" is file-00n.txt in the folder docs.
class ResultsList : public ListProgram {
 protected:
  static constexpr int kFiles = 200;

  ResultsList() {
    for (int i = 0; i < kFiles; ++i) program.Drive().MakeFile("docs/" + NameOf(i));
    program.StartAndWait();
    program.SearchFor(u"file");
  }

  static std::string NameOf(int i) {
    return "file-" + std::string(i < 10 ? "00" : i < 100 ? "0" : "") + std::to_string(i) + ".txt";
  }
};

}  // namespace quilmark
