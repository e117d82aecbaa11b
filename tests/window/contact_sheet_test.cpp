// Pictures of the window in every view, scale and colour, which tools/contact_sheet.sh lays out on one
// sheet. The names of the pictures are the captions there.
#include <gtest/gtest.h>

#include "platform/win32/wide.h"
#include "shell/list/list_colors.h"
#include "shell/preset_palette.h"
#include "window/window_program.h"

namespace quilmark {
namespace {

constexpr int kFirstTagId = 200, kSizePresetId = 106, kTimePresetId = 107, kCustom = 4;

class ContactSheet : public testing::Test {
 protected:
  static constexpr int kPitch = 44, kHeader = 40;

  ContactSheet() {
    WaitPastMidnight();
    const std::u16string stretched(120, u'n');
    for (const std::u16string& name :
         {std::u16string(u"ana-banana.txt"), std::u16string(u"China-资料-中文名.docx"),
          std::u16string(u"finale-日本語のファイル.pdf"), std::u16string(u"final-한국어.txt"),
          std::u16string(u"name-ملف-عربي.txt"), std::u16string(u"name-קובץ-עברי.txt"),
          std::u16string(u"nature-\U0001F33F\U0001F680.jpg"), u"name-" + stretched + u".bin"}) {
      program.Drive().MakeFile(std::filesystem::path(Wide(u"Sheet/" + name)), std::string(70'000, 'x'));
    }
    for (int i = 10; i < 40; ++i) {
      program.Drive().MakeFile(
          "Sheet/zinnias, a folder with a long name/annals-" + std::to_string(i) + ".txt",
          std::string(static_cast<size_t>(i), 'x'));
    }
    program.Drive().MakeFolder("Sheet/Finances");
  }
  ~ContactSheet() override {
    if (!program.IsRunning()) return;
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
  }

  void StartWithRows() {
    program.StartAndWait();
    program.SearchFor(u"na");
    WaitUntil("the rows", [this] { return program.Ask(Probe::kRows) > 30; });
    WaitUntil("the size of the first row", [this] { return program.Ask(Probe::kFirstRowSize) >= 0; });
    WaitForCount(u"(40)");
  }
  // Of the first tag.
  void WaitForCount(const std::u16string& count) {
    WaitUntil("the counts", [&] {
      return program.TextOf(GetDlgItem(program.Window(), kFirstTagId)).ends_with(u"\r\n" + count);
    });
  }
  void PressHeader(int x) {
    const int64_t before = program.Ask(Probe::kShownGeneration);
    const LPARAM place = MAKELPARAM(x, FirstRow() - kHeader / 2);
    SendMessageW(program.Window(), WM_LBUTTONDOWN, MK_LBUTTON, place);
    SendMessageW(program.Window(), WM_LBUTTONUP, 0, place);
    WaitUntil("the sorted rows", [&] { return program.Ask(Probe::kShownGeneration) > before; });
  }
  void Picture(const std::string& caption) {
    program.Ask(Probe::kRepaint, 1);
    program.Screenshot("sheet-" + caption);
  }
  void Resize(int width, int height) {
    SetWindowPos(program.Window(), nullptr, 10, 10, width, height, SWP_NOZORDER);
    WaitUntil("the new size", [&] {
      const int64_t client = program.Ask(Probe::kClientWidth);
      return client > width - 40 && client <= width;
    });
  }
  void TakeDpi(WORD dpi) {
    PostMessageW(program.Window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
    WaitUntil("the scale", [&] { return program.Ask(Probe::kDpi) == dpi; });
  }
  void Choose(int combo, int item) {
    const HWND box = GetDlgItem(program.Window(), combo);
    SendMessageW(box, CB_SETCURSEL, static_cast<WPARAM>(item), 0);
    SendMessageW(program.Window(), WM_COMMAND, MAKEWPARAM(combo, CBN_SELCHANGE),
                 reinterpret_cast<LPARAM>(box));
  }
  int FirstRow() { return static_cast<int>(program.Ask(Probe::kHeaderTop)) + kHeader; }
  int MiddleOf(int row) { return FirstRow() + row * kPitch + kPitch / 2; }
  // With the modifier in the message: the state of a held key may be overtaken by that of the screen.
  void ClickRow(int row, WPARAM modifier = 0) {
    const LPARAM place = MAKELPARAM(150, MiddleOf(row));
    SendMessageW(program.Window(), WM_LBUTTONDOWN, MK_LBUTTON | modifier, place);
    SendMessageW(program.Window(), WM_LBUTTONUP, modifier, place);
  }
  Color PixelAt(int x, int y) {
    return static_cast<Color>(
        program.Ask(Probe::kPixel, static_cast<uint32_t>(x) + 65'536 * static_cast<uint32_t>(y)));
  }
  // Selects the rows 1, 3 and 4, and leaves the mouse over row 5.
  void SelectAndHover() {
    ClickRow(1);
    ClickRow(3, MK_CONTROL);
    ClickRow(4, MK_CONTROL);
    EXPECT_EQ(program.Ask(Probe::kSelectedRows), 3);
    program.MoveMouse(700, MiddleOf(5));
    WaitUntil("the row under the mouse", [this] { return program.Ask(Probe::kHoverRow) == 5; });
  }
  // Where SelectAndHover has been.
  void ExpectColorsOf(const Palette& palette) {
    constexpr int kInRow = 30;
    EXPECT_EQ(PixelAt(kInRow, FirstRow() + kPitch + 3), palette.rowSel);
    EXPECT_EQ(PixelAt(kInRow, FirstRow() + 2 * kPitch + 3), palette.surface);
    EXPECT_EQ(PixelAt(kInRow, FirstRow() + 5 * kPitch + 3), ListColorsOf(palette).hovered.ground);
  }

  WindowProgram program;
};

TEST_F(ContactSheet, ThreeViewsAtThreeScales) {
  StartWithRows();
  Resize(1'560, 960);
  for (const int percent : {100, 150, 200}) {
    TakeDpi(static_cast<WORD>(percent * 96 / 100));
    for (const uint32_t view : {0u, 1u, 2u}) {
      program.Ask(Probe::kSetView, view);
      const char* const views[] = {"list", "small-icons", "large-icons"};
      WaitUntil("a list at rest", [this] { return program.Ask(Probe::kIsScrolling) == 0; });
      Picture("1-" + std::to_string(percent) + "-" + views[view]);
      RECT box = {};
      GetClientRect(program.SearchBox(), &box);
      EXPECT_EQ(box.bottom, 38 * percent / 100);
    }
  }
  program.Ask(Probe::kSetView, 0);
}

TEST_F(ContactSheet, ThemesAndPresets) {
  StartWithRows();
  SelectAndHover();
  for (const bool dark : {false, true}) {
    if (dark) program.Ask(Probe::kSwitchTheme, 1);
    Picture(dark ? "2-theme-dark" : "2-theme-light");
    ExpectColorsOf(ThemeDefaults(dark));
  }
  for (int index = 0; index < kUiColorPresets; ++index) {
    program.Ask(Probe::kTakePreset, static_cast<uint32_t>(index));
    Picture("3-preset-" + std::to_string(index));
    ExpectColorsOf(PresetPalette(index));
  }
}

TEST_F(ContactSheet, HighContrast) {
  StartWithRows();
  program.Ask(Probe::kTakePreset, 4);
  SelectAndHover();
  program.Ask(Probe::kSetHighContrast, 1);
  for (const int message : {WM_SYSCOLORCHANGE, WM_SETTINGCHANGE, WM_THEMECHANGED}) {
    program.Ask(Probe::kSetHighContrast, 1);
    SendMessageW(program.Window(), static_cast<UINT>(message), 0, 0);
    EXPECT_EQ(PixelAt(30, FirstRow() + kPitch + 3), ColorOfHex(0x1AEBFF)) << message;
    EXPECT_EQ(PixelAt(30, FirstRow() + 2 * kPitch + 3), ColorOfHex(0x000000)) << message;
    Picture("6-high-contrast");
    program.Ask(Probe::kTakePreset, 4);  // for later
    EXPECT_EQ(PixelAt(30, FirstRow() + kPitch + 3), ColorOfHex(0x1AEBFF)) << message;
    program.Ask(Probe::kSetHighContrast, 0);
    SendMessageW(program.Window(), static_cast<UINT>(message), 0, 0);
    EXPECT_EQ(PixelAt(30, FirstRow() + 2 * kPitch + 3), ColorOfHex(kUiColorPresetRows[4].rrggbb[0]))
        << message;
  }
}

TEST_F(ContactSheet, ManyLongTags) {
  std::string table = "All Files=\n";
  for (int i = 1; i <= 20; ++i) {
    table += "Reports and forecasts of the quarter " + std::to_string(i) + "=.txt\n";
  }
  program.Settings().MakeFile("filters.ini", table);
  StartWithRows();
  for (const int width : {800, 1'100, 1'560}) {
    Resize(width, width == 800 ? 500 : width == 1'100 ? 700 : 960);
    Picture("4-tags-" + std::to_string(width));
    RECT client = {};
    GetClientRect(program.Window(), &client);
    for (int tag = 0; tag <= 20; ++tag) {
      RECT place = {};
      GetWindowRect(GetDlgItem(program.Window(), kFirstTagId + tag), &place);
      MapWindowPoints(nullptr, program.Window(), reinterpret_cast<POINT*>(&place), 2);
      EXPECT_LE(place.right, client.right) << tag;
      EXPECT_LE(place.right - place.left, 220) << tag;
    }
    program.Ask(Probe::kSetSidebar, 1);
    Picture("4-sidebar-" + std::to_string(width));
    EXPECT_FALSE(IsWindowVisible(GetDlgItem(program.Window(), kFirstTagId)));
    program.Ask(Probe::kSetSidebar, 0);
  }
  TakeDpi(192);
  program.Ask(Probe::kSetSidebar, 1);
  Picture("4-sidebar-200-percent");
}

TEST_F(ContactSheet, AWideWindow) {
  constexpr int kWidth = 2'560, kHeight = 1'440;
  ASSERT_GE(GetSystemMetrics(SM_CXSCREEN), kWidth) << "the screen is too small";
  ASSERT_GE(GetSystemMetrics(SM_CYSCREEN), kHeight) << "the screen is too small";
  StartWithRows();
  SetWindowPos(program.Window(), nullptr, 0, 0, kWidth, kHeight, SWP_NOZORDER);
  WaitUntil("the new size", [&] { return program.Ask(Probe::kClientWidth) > kWidth - 40; });
  SelectAndHover();
  for (const uint32_t view : {0u, 1u, 2u}) {
    program.Ask(Probe::kSetView, view);
    Picture("7-wide-" + std::to_string(view));
  }
  program.Ask(Probe::kSetView, 0);
  // The path column takes what is left.
  int64_t columns = program.Ask(Probe::kPathWidth);
  for (uint32_t column = 0; column < 5; ++column) columns += program.Ask(Probe::kColumnWidth, column);
  EXPECT_EQ(columns, program.Ask(Probe::kClientWidth) - 12);
}

TEST_F(ContactSheet, TextsOfOtherLanguages) {
  struct Language {
    const char *name, *filters;
  };
  for (const Language& language :
       {Language{"long",
                 "[All Filesoemn]=\n[Foldersoemn]=.dir\n[Documentsoemnu]=.txt\n[Imagesoem]=.jpg\n"
                 "[Archivesoemn]=.zip\n[Applicationsoemnuo]=.exe\n[Videosoem]=.mp4\n[Audiooem]=.mp3\n"},
        Language{"ideographs",
                 "所有文件=\n文件夹=.dir\n文档=.txt\n图片=.jpg\n压缩包=.zip\n应用程序=.exe\n视频=."
                 "mp4\n音频=.mp3\n"},
        Language{
            "right-to-left",
            "كل الملفات=\nمجلدات=.dir\nمستندات=.txt\nصور=.jpg\nأرشيف=.zip\nتطبيقات=.exe\nفيديو=.mp4\n"
            "صوت=.mp3\n"}}) {
    const ScopedEnvironment variable(kLanguageVariable, language.name);
    program.Settings().MakeFile("filters.ini", language.filters);
    program.Start();
    WaitUntil("an open search box", [this] { return IsWindowEnabled(program.SearchBox()) != FALSE; });
    WaitUntil("a searchable drive", [this] { return program.Ask(Probe::kSyncs) >= 1; });
    program.TakeKeyboard();
    const std::string caption = std::string("8-") + language.name;
    Picture(caption + "-nothing-typed");
    program.SearchFor(u"na");
    WaitUntil("the rows", [this] { return program.Ask(Probe::kRows) == 40; });
    PressHeader(380);
    WaitForCount(u"(40)");
    Picture(caption + "-list");
    RECT client = {};
    GetClientRect(program.Window(), &client);
    for (int tag = 0; tag < 8; ++tag) {
      RECT place = {};
      GetWindowRect(GetDlgItem(program.Window(), kFirstTagId + tag), &place);
      MapWindowPoints(nullptr, program.Window(), reinterpret_cast<POINT*>(&place), 2);
      EXPECT_LE(place.right, client.right) << tag;
    }
    program.Ask(Probe::kSetSidebar, 1);
    Choose(kSizePresetId, kCustom);
    Choose(kTimePresetId, kCustom);
    WaitForCount(u"(38)");
    Picture(caption + "-sidebar-and-presets");
    const HWND presets = GetDlgItem(program.Window(), kTimePresetId);
    SendMessageW(presets, CB_SHOWDROPDOWN, TRUE, 0);
    WaitUntil("the list", [&] { return SendMessageW(presets, CB_GETDROPPEDSTATE, 0, 0) != 0; });
    program.Screenshot("sheet-" + caption + "-drop-list");
    SendMessageW(presets, CB_SHOWDROPDOWN, FALSE, 0);
    Choose(kSizePresetId, 3);
    WaitForCount(u"(0)");
    EXPECT_EQ(program.Ask(Probe::kRows), 0);
    Picture(caption + "-nothing-left");
    program.Ask(Probe::kSetSidebar, 0);
    Choose(kSizePresetId, 0);
    Choose(kTimePresetId, 0);
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
  }
}

TEST_F(ContactSheet, StatesOfTheList) {
  program.StartAndWait();
  EXPECT_EQ(program.Ask(Probe::kRows), 0);
  Picture("5-nothing-typed");
  program.SearchFor(u"qqqq");
  EXPECT_EQ(program.Ask(Probe::kRows), 0);
  Picture("5-nothing-found");
  program.PressCtrl(u'A');
  program.SearchFor(u"na");
  WaitUntil("the rows", [this] { return program.Ask(Probe::kRows) > 30; });
  Resize(1'300, 700);
  PressHeader(380);
  WaitUntil("the largest first", [this] { return program.Ask(Probe::kFirstRowSize) == 70'000; });
  Picture("5-sorted-by-size");
  Choose(kSizePresetId, kCustom);
  Choose(kTimePresetId, kCustom);
  WaitForCount(u"(38)");
  Picture("5-custom-ranges");
  program.Ask(Probe::kSwitchTheme, 1);
  Picture("5-custom-ranges-dark");
  ClickRow(2);
  WaitUntil("a row", [this] { return program.Ask(Probe::kSelectedRows) == 1; });
  program.MoveMouse(700, MiddleOf(4));  // with the tip of its cell
  WaitUntil("the row under the mouse", [this] { return program.Ask(Probe::kHoverRow) == 4; });
  program.Press(VK_F2);
  WaitUntil("the editor", [this] { return program.Ask(Probe::kRenameFocused) == 1; });
  Picture("5-rename-dark");
  program.Press(VK_ESCAPE);
  WaitUntil("the end of the editor", [this] { return program.Ask(Probe::kRenameEditor) == 0; });
  program.Ask(Probe::kSwitchTheme, 1);
  TakeDpi(144);
  ClickRow(2);
  program.Press(VK_F2);
  WaitUntil("the editor", [this] { return program.Ask(Probe::kRenameFocused) == 1; });
  Picture("5-rename-150-percent");
  program.Press(VK_ESCAPE);
}

}  // namespace
}  // namespace quilmark
