#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>

#include "config/ui_colors.h"
#include "platform/text_file.h"
#include "window/window_program.h"

#include <shellapi.h>

namespace quilmark {
namespace {

// A drive of three files and a folder.
class MainWindow : public testing::Test {
 protected:
  MainWindow() {
    program.Drive().MakeFile("reports/report-1.txt");
    program.Drive().MakeFile("reports/report-2.txt");
    program.Drive().MakeFile("photo.jpg");
  }
  void EndByMenu() {
    program.Exit();
    EXPECT_EQ(program.WaitForEnd(), 0u);
  }
  std::vector<std::u16string> ScopeEntries() {
    std::vector<std::u16string> entries;
    const LRESULT count = SendMessageW(program.ScopeBox(), CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
      char16_t text[64] = {};
      SendMessageW(program.ScopeBox(), CB_GETLBTEXT, static_cast<WPARAM>(i),
                   reinterpret_cast<LPARAM>(text));
      entries.emplace_back(text);
    }
    return entries;
  }

  WindowProgram program;
};

TEST_F(MainWindow, OpensCentredWithItsDefaultSize) {
  program.StartAndWait();
  RECT rect = {}, area = {};
  GetWindowRect(program.Window(), &rect);
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  EXPECT_EQ(rect.right - rect.left, 1'100);
  EXPECT_EQ(rect.bottom - rect.top, 700);
  EXPECT_EQ(rect.left, (area.left + area.right - 1'100) / 2);
  EXPECT_EQ(rect.top, (area.top + area.bottom - 700) / 2);
  EXPECT_EQ(ScopeEntries(), (std::vector<std::u16string>{u"All", u"Desktop", u"T:"}));
  EndByMenu();
}

TEST_F(MainWindow, LetsNobodyBeAskedForADisk) {
  program.StartAndWait();
  EXPECT_EQ(program.Ask(Probe::kAsksForMedia), 0);
  EndByMenu();
}

TEST_F(MainWindow, FindsWhatIsTyped) {
  program.StartAndWait();
  program.SearchFor(u"report");
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: 3");
  EXPECT_EQ(program.Ask(Probe::kRows), 3);
  program.Screenshot("typed");
  EndByMenu();
}

TEST_F(MainWindow, DebouncesTypingToOneSearch) {
  program.StartAndWait();
  const int64_t before = program.Ask(Probe::kSearchGeneration);
  program.Type(u"photo");  // and no Enter, which would come late on a busy machine
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: 1");
  EXPECT_EQ(program.Ask(Probe::kSearchGeneration), before + 1);
  EndByMenu();
}

TEST_F(MainWindow, TakesEnterAsASearchAtOnce) {
  program.StartAndWait();
  program.Press(VK_RETURN);  // everything
  WaitUntil("the whole index", [this] { return program.Ask(Probe::kRows) == 4; });
  EndByMenu();
}

TEST_F(MainWindow, SelectsItsWholeTextByCtrlA) {
  program.StartAndWait();
  program.SearchFor(u"report");
  program.PressCtrl(u'A');
  program.SearchFor(u"photo");
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: 1");
  EndByMenu();
}

TEST_F(MainWindow, KeepsItsSelectedTextWhereAPasteBringsNone) {
  program.StartAndWait();
  program.Type(u"before");
  program.PressCtrl(u'A');
  WaitUntil("the text", [this] { return program.TextOf(program.SearchBox()) == u"before"; });
  const auto paste = [this] { SendMessageW(program.SearchBox(), WM_PASTE, 0, 0); };

  const auto openClipboard = [] {  // another may have it for a moment
    return WaitUntil("the clipboard", [] { return OpenClipboard(nullptr) != FALSE; });
  };
  ASSERT_TRUE(openClipboard());
  ASSERT_TRUE(EmptyClipboard());
  paste();  // busy
  EXPECT_EQ(program.TextOf(program.SearchBox()), u"before");
  CloseClipboard();
  paste();  // empty
  EXPECT_EQ(program.TextOf(program.SearchBox()), u"before");

  ASSERT_TRUE(openClipboard());
  const HGLOBAL text = GlobalAlloc(GMEM_MOVEABLE, sizeof L"after");
  std::memcpy(GlobalLock(text), L"after", sizeof L"after");
  GlobalUnlock(text);
  ASSERT_NE(SetClipboardData(CF_UNICODETEXT, text), nullptr);
  CloseClipboard();
  paste();
  EXPECT_EQ(program.TextOf(program.SearchBox()), u"after");
}

TEST_F(MainWindow, LeavesStaleResultsAlone) {
  program.StartAndWait();
  program.SearchFor(u"report");
  program.Ask(Probe::kPostStaleResults);
  EXPECT_EQ(program.Ask(Probe::kRows), 3);
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: 3");
  EndByMenu();
}

TEST_F(MainWindow, IsShownBySecondCopies) {
  program.StartAndWait();
  program.Ask(Probe::kSetTrayIcon, 1);
  PostMessageW(program.Window(), WM_CLOSE, 0, 0);
  WaitUntil("a hidden window", [this] { return !program.IsVisible(); });
  EXPECT_EQ(program.RunSecondCopy(L"-hidden"), 0u);
  EXPECT_FALSE(program.IsVisible());
  EXPECT_FALSE(program.Ask(Probe::kShownByUser));
  EXPECT_EQ(program.RunSecondCopy(), 0u);
  WaitUntil("a visible window", [this] { return program.IsVisible(); });
  // Raised from outside it would be visible too; where the copy has no rights its request does it alone.
  WaitUntil("the request", [this] { return program.Ask(Probe::kShownByUser) == 1; });
  EndByMenu();
}

// What a copy without the rights of this one can do.
TEST_F(MainWindow, IsShownByTheRequestAlone) {
  program.StartAndWait(L"-hidden");
  EXPECT_FALSE(program.IsVisible());
  PostMessageW(program.Window(), RegisterWindowMessageW(L"Quilmark_ShowMainWindow_2024"), 0, 0);
  WaitUntil("a visible window", [this] { return program.IsVisible(); });
  EXPECT_EQ(program.Ask(Probe::kShownByUser), 1);
  EndByMenu();
}

TEST_F(MainWindow, StartsHiddenOnRequest) {
  for (const wchar_t* argument : {L"-HIDDEN", L"/hidden"}) {
    program.StartAndWait(argument);
    EXPECT_FALSE(program.IsVisible());
    WaitUntil("the end of the start", [this] { return program.Ask(Probe::kFirstSearchDeferred) == 1; });
    EXPECT_EQ(program.RunSecondCopy(), 0u);
    WaitUntil("a visible window", [this] { return program.IsVisible(); });
    EndByMenu();
  }
}

TEST_F(MainWindow, HidesAtACloseWhereTheTrayIconStands) {
  program.StartAndWait();
  program.SearchFor(u"report");
  program.Ask(Probe::kSetTrayIcon, 1);
  PostMessageW(program.Window(), WM_CLOSE, 0, 0);
  WaitUntil("a hidden window", [this] { return !program.IsVisible(); });
  EXPECT_TRUE(program.IsRunning());
  EXPECT_EQ(program.Ask(Probe::kRows), 3);  // not the close button: the view stays
  EndByMenu();
}

TEST_F(MainWindow, IsCleanAfterItsCloseButton) {
  program.StartAndWait();
  program.SearchFor(u"report");
  program.Ask(Probe::kSetTrayIcon, 1);
  PostMessageW(program.Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
  WaitUntil("a hidden window", [this] { return !program.IsVisible(); });
  WaitUntil("an empty list", [this] { return program.Ask(Probe::kRows) == 0; });
  EXPECT_EQ(GetWindowTextLengthW(program.SearchBox()), 0);
  EndByMenu();
}

TEST_F(MainWindow, EndsAtACloseWithoutATrayIcon) {
  program.StartAndWait();
  program.Ask(Probe::kSetTrayIcon, 0);
  PostMessageW(program.Window(), WM_CLOSE, 0, 0);
  EXPECT_EQ(program.WaitForEnd(), 0u);
}

TEST_F(MainWindow, HidesInsteadOfMinimising) {
  program.StartAndWait();
  PostMessageW(program.Window(), WM_SYSCOMMAND, SC_MINIMIZE, 0);
  WaitUntil("a hidden window", [this] { return !program.IsVisible(); });
  EXPECT_FALSE(IsIconic(program.Window()));
  EndByMenu();
}

TEST_F(MainWindow, ComesAndGoesByItsHotkey) {
  program.StartAndWait();
  const auto pressAltZ = [this] { PostMessageW(program.Window(), WM_HOTKEY, 30001, 0); };
  pressAltZ();
  WaitUntil("a hidden window", [this] { return !program.IsVisible(); });
  pressAltZ();
  WaitUntil("a visible window", [this] { return program.IsVisible(); });
  EXPECT_EQ(program.Ask(Probe::kShownByUser), 1);
  WaitUntil("the focus", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });
  EndByMenu();
}

TEST_F(MainWindow, GivesItsMemoryBackWhenItsHotkeyHidesIt) {
  program.StartAndWait();
  PostMessageW(program.Window(), WM_HOTKEY, 30001, 0);
  WaitUntil("a trim", [this] { return program.Ask(Probe::kOwnTrims) == 1; });
  EXPECT_EQ(program.Ask(Probe::kOtherTrims), 0);
  EndByMenu();
}

TEST_F(MainWindow, HasOthersGiveTheirMemoryBackWhereTheUserWantsIt) {
  program.Settings().MakeFile("window.ini", "globalTrimOnToggle=1\n");
  program.StartAndWait();
  PostMessageW(program.Window(), WM_HOTKEY, 30001, 0);
  WaitUntil("a trim of others", [this] { return program.Ask(Probe::kOtherTrims) > 1; });
  WaitUntil("a trim", [this] { return program.Ask(Probe::kOwnTrims) == 1; });
  EndByMenu();
}

TEST_F(MainWindow, ComesBackIntoTheTrayOfANewShell) {
  program.StartAndWait();
  NOTIFYICONDATAW icon = {};
  icon.cbSize = sizeof icon;
  icon.hWnd = program.Window();
  icon.uID = 1;
  ASSERT_TRUE(
      WaitUntil("an icon to lose", [&] { return Shell_NotifyIconW(NIM_DELETE, &icon) != FALSE; }));
  PostMessageW(program.Window(), RegisterWindowMessageW(L"TaskbarCreated"), 0, 0);
  WaitUntil("a note of it", [this] {
    return program.GdiLog().find(u"TaskbarCreated received") != std::u16string::npos;
  });
  EXPECT_TRUE(Shell_NotifyIconW(NIM_DELETE, &icon)) << "it has not come back";
  EndByMenu();
}

TEST_F(MainWindow, SavesAtTheEndOfTheSession) {
  program.StartAndWait();
  program.Settings().MakeFile("window.ini", "");
  const auto settings = [this] {
    return ReadTextFile(program.Settings().PathOf(u"window.ini")).value_or(u"none");
  };
  const auto tellEnd = [this](WPARAM ends) { SendMessageW(program.Window(), WM_ENDSESSION, ends, 0); };
  tellEnd(FALSE);
  EXPECT_EQ(settings(), u"");
  tellEnd(TRUE);
  EXPECT_TRUE(settings().starts_with(u"width=")) << settings().size();
  EXPECT_NE(program.MetricsLog().find(u"summary hit_ratio="), std::u16string::npos);
  EndByMenu();
}

TEST_F(MainWindow, RescalesWithItsScreen) {
  program.StartAndWait();
  const int64_t column = program.Ask(Probe::kColumnWidth, 1);
  PostMessageW(program.Window(), WM_DPICHANGED, MAKEWPARAM(144, 144), 0);
  WaitUntil("150 %", [this] { return program.Ask(Probe::kDpi) == 144; });
  EXPECT_EQ(program.Ask(Probe::kColumnWidth, 1), column * 3 / 2);
  RECT box = {};
  GetClientRect(program.SearchBox(), &box);
  EXPECT_EQ(box.bottom, 57);
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("150-percent");
  PostMessageW(program.Window(), WM_DPICHANGED, MAKEWPARAM(144, 144), 0);  // the same: nothing
  PostMessageW(program.Window(), WM_DPICHANGED, MAKEWPARAM(96, 96), 0);
  WaitUntil("100 %", [this] { return program.Ask(Probe::kDpi) == 96; });
  EXPECT_EQ(program.Ask(Probe::kColumnWidth, 1), column);
  EndByMenu();
}

TEST_F(MainWindow, HasIconsOfTheScaleOfItsScreen) {
  program.StartAndWait();
  for (const int dpi : {96, 144, 192, 120}) {
    PostMessageW(program.Window(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), 0);
    WaitUntil("the scale", [&] { return program.Ask(Probe::kDpi) == dpi; });
    EXPECT_EQ(program.Ask(Probe::kIconSize, ICON_SMALL), 16 * dpi / 96);
    EXPECT_EQ(program.Ask(Probe::kIconSize, ICON_BIG), 32 * dpi / 96);
  }
}

TEST_F(MainWindow, OnlyMovesAtTheSameScale) {
  program.StartAndWait();
  const int64_t column = program.Ask(Probe::kColumnWidth, 1);
  program.Ask(Probe::kMoveAtScale, 96);
  RECT rect = {};
  GetWindowRect(program.Window(), &rect);
  EXPECT_EQ(rect.right - rect.left, 700);
  EXPECT_EQ(rect.bottom - rect.top, 560);
  EXPECT_EQ(program.Ask(Probe::kColumnWidth, 1), column);
  EXPECT_EQ(program.Ask(Probe::kDpi), 96);
  EndByMenu();
}

TEST_F(MainWindow, StoresASizeOfNothingAndLaysOutNothing) {
  program.StartAndWait();
  const int64_t width = program.Ask(Probe::kClientWidth);
  const int64_t headerTop = program.Ask(Probe::kHeaderTop);
  const auto kept = ReadTextFile(program.Settings().PathOf(u"window.ini"));
  SendMessageW(program.Window(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(0, 500));
  EXPECT_EQ(program.Ask(Probe::kClientWidth), 0);
  EXPECT_EQ(program.Ask(Probe::kClientHeight), 500);
  EXPECT_EQ(program.Ask(Probe::kHeaderTop), headerTop);
  EXPECT_EQ(ReadTextFile(program.Settings().PathOf(u"window.ini")), kept);
  SendMessageW(program.Window(), WM_SIZE, SIZE_RESTORED, MAKELPARAM(width, 500));
  EXPECT_EQ(program.Ask(Probe::kClientWidth), width);
  EndByMenu();
}

TEST_F(MainWindow, AnswersNoticesOfDrivesWhateverTheyCarry) {
  constexpr uint32_t kArrival = 0x8000, kRemoveComplete = 0x8004, kNodesChanged = 7;
  constexpr uint32_t kNoPayload = 0, kPort = 1 << 16;
  program.StartAndWait();
  program.SearchFor(u"report");
  for (const uint32_t event : {kArrival, kRemoveComplete, kNodesChanged}) {
    EXPECT_EQ(program.Ask(Probe::kTellOfDrive, event + kNoPayload), 1);
    EXPECT_EQ(program.Ask(Probe::kTellOfDrive, event + kPort), 1);
  }
  EXPECT_EQ(program.Ask(Probe::kRows), 3);
  EndByMenu();
}

TEST_F(MainWindow, IsThereAgainAfterASleep) {
  constexpr WPARAM kResume = 18, kSuspend = 4;
  constexpr uint32_t kSurfacePixel = 50 + 65'536 * 600;
  program.StartAndWait();
  const int64_t surface = program.Ask(Probe::kPixel, kSurfacePixel);
  SendMessageW(program.Window(), WM_POWERBROADCAST, kSuspend, 0);
  EXPECT_EQ(program.GdiLog().find(u"WM_POWERBROADCAST resume"), std::u16string::npos);
  EXPECT_EQ(SendMessageW(program.Window(), WM_POWERBROADCAST, kResume, 0), 1);
  EXPECT_NE(program.GdiLog().find(u"WM_POWERBROADCAST resume"), std::u16string::npos);
  EXPECT_EQ(program.Ask(Probe::kPixel, kSurfacePixel), surface);
  EXPECT_EQ(SendMessageW(program.Window(), WM_DISPLAYCHANGE, 32, MAKELPARAM(1'600, 1'000)), 0);
  program.Ask(Probe::kRepaint, 1);
  EXPECT_EQ(program.Ask(Probe::kPixel, kSurfacePixel), surface);
  EndByMenu();
}

TEST_F(MainWindow, RepaintsInBothThemes) {
  constexpr uint32_t kSurfacePixel = 50 + 65'536 * 600;
  constexpr int64_t kLight = 0xF8F4F1, kDark = 0x1C1412;  // surface, blue first
  program.StartAndWait();
  EXPECT_EQ(program.Ask(Probe::kPixel, kSurfacePixel), kLight);
  program.Ask(Probe::kSwitchTheme, 1);
  EXPECT_EQ(program.Ask(Probe::kDarkTheme), 1);
  EXPECT_EQ(program.Ask(Probe::kPixel, kSurfacePixel), kDark);
  RECT scope = {}, search = {};
  GetClientRect(program.ScopeBox(), &scope);
  GetClientRect(program.SearchBox(), &search);
  EXPECT_EQ(scope.bottom, search.bottom);  // a theme leaves the sizes alone
  program.SearchFor(u"report");
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("dark");
  program.Ask(Probe::kSwitchTheme, 1);
  EXPECT_EQ(program.Ask(Probe::kPixel, kSurfacePixel), kLight);
  EndByMenu();
}

TEST_F(MainWindow, KeepsItsTextInTheMiddleOfTheSearchBox) {
  program.StartAndWait();
  const auto textTop = [this] {
    program.Type(u"a");
    LRESULT place = -1;
    WaitUntil("a character", [&] {
      place = SendMessageW(program.SearchBox(), EM_POSFROMCHAR, 0, 0);
      return place != -1;
    });
    return static_cast<int>(HIWORD(place));
  };
  const int before = textTop();
  EXPECT_GT(before, 4);
  program.Ask(Probe::kSwitchTheme, 1);
  EXPECT_EQ(textTop(), before);
  EndByMenu();
}

TEST_F(MainWindow, WearsEveryPresetAndKeepsIt) {
  constexpr uint32_t kSurfacePixel = 50 + 65'536 * 600;
  program.StartAndWait();
  program.SearchFor(u"report");
  for (uint32_t index = 0; index < kUiColorPresets; ++index) {
    program.Ask(Probe::kTakePreset, index);
    const UiColorPreset& preset = kUiColorPresetRows[index];
    EXPECT_EQ(program.Ask(Probe::kDarkTheme), preset.mode);
    EXPECT_EQ(program.Ask(Probe::kPixel, kSurfacePixel), ColorOfHex(preset.rrggbb[0]));
    program.Screenshot("preset-" + std::to_string(index));
  }
  EndByMenu();
  program.StartAndWait();
  EXPECT_EQ(program.Ask(Probe::kPixel, kSurfacePixel), ColorOfHex(kUiColorPresetRows[9].rrggbb[0]));
  EndByMenu();
}

TEST_F(MainWindow, ShowsAtOnceThatItsColorsWereReset) {
  program.StartAndWait();
  const auto ground = [this] { return program.Ask(Probe::kPixel, 300 + 65'536 * 400); };
  const int64_t before = ground();
  program.Ask(Probe::kTakePreset, 4);  // "Warm Paper"
  EXPECT_NE(ground(), before);
  const int64_t paints = program.Ask(Probe::kPaints);
  program.Ask(Probe::kResetColors);
  EXPECT_EQ(ground(), before);
  EXPECT_GT(program.Ask(Probe::kPaints), paints);
  EndByMenu();
}

TEST_F(MainWindow, KeepsItsSizeAndThemeForTheNextRun) {
  program.StartAndWait();
  SetWindowPos(program.Window(), nullptr, 0, 0, 1'000, 640, SWP_NOMOVE | SWP_NOZORDER);
  WaitUntil("the new size", [this] {
    const int64_t width = program.Ask(Probe::kClientWidth);
    return width > 900 && width <= 1'000;
  });
  program.Ask(Probe::kSwitchTheme, 1);
  EndByMenu();
  program.StartAndWait();
  RECT rect = {};
  GetWindowRect(program.Window(), &rect);
  EXPECT_EQ(rect.right - rect.left, 1'000);
  EXPECT_EQ(rect.bottom - rect.top, 640);
  EXPECT_EQ(program.Ask(Probe::kDarkTheme), 1);
  EndByMenu();
}

TEST_F(MainWindow, KeepsTheRestoredSizeWhenItEndsMaximised) {
  program.StartAndWait();
  SetWindowPos(program.Window(), nullptr, 0, 0, 930, 610, SWP_NOMOVE | SWP_NOZORDER);
  WaitUntil("its size", [this] { return program.Ask(Probe::kClientWidth) < 930; });
  ShowWindow(program.Window(), SW_MAXIMIZE);
  WaitUntil("the whole screen", [this] { return program.Ask(Probe::kClientWidth) > 930; });
  EndByMenu();
  const std::u16string settings = ReadTextFile(program.Settings().PathOf(u"window.ini")).value_or(u"");
  EXPECT_NE(settings.find(u"width=930\nheight=610\n"), std::u16string::npos);
}

TEST_F(MainWindow, EndsInItsOrderAndWritesTheSummary) {
  program.StartAndWait();
  EndByMenu();
  const std::u16string log = program.GdiLog();
  size_t place = 0;
  for (const auto* line :
       {u"WM_CREATE begin", u"WM_CREATE end", u"WM_DESTROY begin", u"WM_DESTROY end"}) {
    const size_t found = log.find(line, place);
    ASSERT_NE(found, std::u16string::npos) << std::string(line, line + 10) << " is missing";
    place = found;
  }
  EXPECT_NE(program.MetricsLog().find(u"startup index_ms="), std::u16string::npos);
  EXPECT_NE(program.MetricsLog().find(u"summary hit_ratio=0.00% hits=0 misses=0 "),
            std::u16string::npos);
}

TEST_F(MainWindow, FollowsDrivesThatComeAndGo) {
  program.StartAndWait();
  program.SearchFor(u"report");
  program.Ask(Probe::kUnmapDrive, u'T');
  WaitUntil("the loss", [this] { return program.Ask(Probe::kRows) == 0; });
  program.Ask(Probe::kMapDriveAgain, u'T');
  WaitUntil("the return", [this] { return program.Ask(Probe::kRows) == 3; });
  EndByMenu();
}

TEST_F(MainWindow, HoldsNoMoreObjectsAfterManyThemesAndPaints) {
  program.StartAndWait();
  program.SearchFor(u"report");
  // Small: what counts are the objects, not the pixels.
  SetWindowPos(program.Window(), nullptr, 0, 0, 300, 240, SWP_NOMOVE | SWP_NOZORDER);
  const auto switchAndPaint = [this](int rounds) {
    for (int round = 0; round < rounds; ++round) {
      program.Ask(Probe::kSwitchTheme, 2);
      program.Ask(Probe::kRepaint, 20);
    }
  };
  switchAndPaint(2);  // what is made on first use
  // A job that runs at the moment has some of its own. A leak grows in each series.
  std::string counts;
  const auto grows = [&] {
    const int64_t gdi = program.Ask(Probe::kGdiObjects), user = program.Ask(Probe::kUserObjects);
    const int64_t paints = program.Ask(Probe::kPaints);
    switchAndPaint(100);
    EXPECT_GE(program.Ask(Probe::kPaints), paints + 2'000);
    counts += std::to_string(gdi) + "+" + std::to_string(user) + " ";
    return program.Ask(Probe::kGdiObjects) > gdi || program.Ask(Probe::kUserObjects) > user;
  };
  int series = 0;
  while (grows() && ++series < 6) continue;
  EXPECT_LT(series, 6) << counts;
  EndByMenu();
}

TEST_F(MainWindow, OutlivesAnExceptionInAJob) {
  program.StartAndWait();
  program.Ask(Probe::kThrowInJob);
  WaitUntil("a line in the log", [this] {
    return program.GdiLog().find(u"[BackgroundThreadException] thrown_by_test") != std::u16string::npos;
  });
  program.SearchFor(u"report");
  EXPECT_EQ(program.Ask(Probe::kRows), 3);
  EndByMenu();
}

bool HasDump(const ScratchFolder& folder) {
  for (const auto& file : std::filesystem::directory_iterator(folder.HostPath())) {
    if (file.path().extension() == ".dmp" && file.file_size() > 1'000) return true;
  }
  return false;
}

class CrashOf : public MainWindow, public testing::WithParamInterface<Probe> {};

TEST_P(CrashOf, LeavesADumpAndALine) {
  program.StartAndWait();
  program.Ask(GetParam());
  EXPECT_NE(program.WaitForEnd(), 0u);
  EXPECT_NE(program.GdiLog().find(u"[Crash] exception C0000005 at Quilmark-test.exe+0x"),
            std::u16string::npos);
  EXPECT_TRUE(HasDump(program.Settings()));
}

TEST_F(MainWindow, LeavesTheDumpOfACrashInAFolderThatOthersWriteTo) {
  const ScopedEnvironment temp("TMP", program.Settings().HostPath().parent_path().string());
  program.StartAndWait();
  program.Ask(Probe::kCrash);
  EXPECT_NE(program.WaitForEnd(), 0u);
  EXPECT_TRUE(HasDump(program.Settings()));
}

// Wine's dump waits for that lock for good, and so does the program.
TEST_F(MainWindow, LeavesTheLineOfACrashThatFindsTheLoaderLocked) {
  program.StartAndWait();
  program.Ask(Probe::kCrashWithoutLoader);
  WaitUntil("a line in the log", [this] {
    return program.GdiLog().find(u"[Crash] exception C0000005 at Quilmark-test.exe+0x") !=
           std::u16string::npos;
  });
}

INSTANTIATE_TEST_SUITE_P(Threads, CrashOf, testing::Values(Probe::kCrash, Probe::kCrashInWindow));

}  // namespace
}  // namespace quilmark
