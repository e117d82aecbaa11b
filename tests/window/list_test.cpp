#include <gtest/gtest.h>

#include <filesystem>

#include "canvas/line_marks.h"
#include "config/palette.h"
#include "platform/text_file.h"
#include "shell/list/list_colors.h"
#include "window/results_list.h"

namespace quilmark {
namespace {

namespace fs = std::filesystem;

TEST_F(ResultsList, SelectsByClicksWithAndWithoutModifiers) {
  ClickRow(1);
  WaitForSelected(1);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 1);
  program.ClickWith(VK_SHIFT, program.Window(), 150, MiddleOf(4));
  WaitForSelected(4);
  program.ClickWith(VK_CONTROL, program.Window(), 150, MiddleOf(2));
  WaitForSelected(3);
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("selection");
}

TEST_F(ResultsList, ShowsATipWhereTheMouseRestsAndHidesItElsewhere) {
  const auto waitForTip = [this](bool isShown) {
    WaitUntil("the tip", [&] { return (program.Ask(Probe::kTipShown) != 0) == isShown; });
  };
  const int middle = FirstRow() + kPitch / 2;
  program.MoveMouse(150, middle);
  waitForTip(true);
  program.Screenshot("tip");
  program.MoveMouse(152, middle);  // the same cell
  WaitUntil("the mouse", [this] { return program.Ask(Probe::kHoverRow) == 0; });
  EXPECT_NE(program.Ask(Probe::kTipShown), 0);
  program.MoveMouse(150, middle + kPitch);
  WaitUntil("the mouse", [this] { return program.Ask(Probe::kHoverRow) == 1; });
  waitForTip(true);
  program.Turn({150, middle}, -1);
  waitForTip(false);
  program.MoveMouse(150, HeaderY());
  program.MoveMouse(150, middle);
  waitForTip(true);
  program.SearchFor(u"file-1");  // another row stands below the mouse
  waitForTip(false);
}

TEST(ResultsListOfMixedNames, MarksHitsWhereTheyStandOnTheScreen) {
  WindowProgram program;
  program.Drive().MakeFile(fs::path(L"name-\x0645\x0644\x0641-\x0639\x0631\x0628\x064A.txt"));
  program.StartAndWait();
  const Color hit = ListColorsOf(ThemeDefaults(program.Ask(Probe::kDarkTheme) != 0)).plain.hit;
  const int y = static_cast<int>(program.Ask(Probe::kHeaderTop)) + 40 + 44 / 2 - 5;
  const auto markOf = [&](const wchar_t* query) {
    const int64_t before = program.Ask(Probe::kShownGeneration);
    SendMessageW(program.SearchBox(), EM_SETSEL, 0, -1);
    SendMessageW(program.SearchBox(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(query));
    WaitUntil("its results", [&] {
      return program.Ask(Probe::kShownGeneration) > before && program.Ask(Probe::kRows) == 1;
    });
    program.Ask(Probe::kRepaint, 1);
    program.Screenshot("mixed-names");
    PixelSpan mark = {.left = 0, .right = 0};
    for (int x = 80; x < 340; ++x) {
      if (program.Ask(Probe::kPixel, static_cast<uint32_t>(x + 65'536 * y)) != hit) continue;
      if (mark.right == 0) mark.left = x;
      mark.right = x + 1;
    }
    return mark;
  };
  const PixelSpan name = markOf(L"name"), first = markOf(L"\x0645\x0644\x0641"),
                  second = markOf(L"\x0639\x0631\x0628\x064A"), end = markOf(L".txt");
  for (const PixelSpan& mark : {name, first, second, end}) EXPECT_GT(mark.right, mark.left);
  // The two words follow each other from right to left.
  EXPECT_LE(name.right, second.left);
  EXPECT_LE(second.right, first.left);
  EXPECT_LE(first.right, end.left + 1);
  program.Exit();
  EXPECT_EQ(program.WaitForEnd(), 0u);
}

TEST_F(ResultsList, ShowsACursorOfItsOwnOnTheEdgesOfColumns) {
  const auto widthOf = [this](uint32_t column) { return program.Ask(Probe::kColumnWidth, column); };
  const int edge = static_cast<int>(widthOf(0) + widthOf(1)), y = HeaderY();
  const auto expectEdge = [&](int x, int atY, bool isEdge) {
    program.MoveMouse(x, atY);
    WaitUntil("the cursor at " + std::to_string(x) + ", " + std::to_string(atY),
              [&] { return (program.Ask(Probe::kEdgeCursor) != 0) == isEdge; });
  };
  expectEdge(edge, y, true);
  expectEdge(edge + 30, y, false);
  expectEdge(edge - 7, y, true);
  expectEdge(edge, FirstRow() + 5, false);  // among the rows
}

TEST_F(ResultsList, ClearsTheSelectionBesideTheRowsAndWithNewResults) {
  ClickRow(1);
  WaitForSelected(1);
  program.Click(program.SearchBox(), 100, 20);
  program.SearchFor(u"-00");  // "file-00": ten rows
  EXPECT_EQ(Selected(), 0);
  EXPECT_EQ(program.Ask(Probe::kRows), 10);
  ClickRow(0);
  WaitForSelected(1);
  ClickRow(10);
  WaitForSelected(0);
}

TEST_F(ResultsList, ScrollsByTheWheel) {
  const POINT middle = {400, 400};
  program.Turn(middle, -3);
  WaitUntil("three notches", [this] { return program.Ask(Probe::kScrollY) == 300; });
  program.Turn(middle, 10);
  WaitUntil("the top", [this] { return program.Ask(Probe::kScrollY) == 0; });
}

TEST_F(ResultsList, LosesNoWheelEventOfABurst) {
  for (int i = 0; i < 1'000; ++i) {
    PostMessageW(program.Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), MAKELPARAM(600, 600));
  }
  const int64_t end = kFiles * kPitch - (program.Ask(Probe::kClientHeight) - FirstRow() - 2 - 10);
  WaitUntil("the end", [&] { return program.Ask(Probe::kScrollY) == end; });
}

TEST_F(ResultsList, ShowsTheEndOfABurstAndMeasuresNothingOnTheWay) {
  // The search itself has nothing more to show.
  program.ExpectTitle(u"Quilmark - Filter: All Files | Hits: 200");
  WaitUntil("the counts", [this] {
    return program.TextOf(GetDlgItem(program.Window(), 200)) == u"All Files\r\n(200)";
  });
  program.Ask(Probe::kFillRows, 10'000'000);
  const auto updatesOfABurst = [this](int64_t end) {
    const int64_t paints = program.Ask(Probe::kPaints), updates = program.Ask(Probe::kRangeUpdates);
    for (int i = 0; i < 1'000; ++i) {
      PostMessageW(program.Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, -WHEEL_DELTA), MAKELPARAM(600, 600));
    }
    WaitUntil("the last event", [&] { return program.Ask(Probe::kScrollY) == end; });
    WaitUntil("its frame", [&] { return program.Ask(Probe::kPaintedScrollY) == end; });
    const int64_t updated = program.Ask(Probe::kRangeUpdates) - updates;
    EXPECT_EQ(program.Ask(Probe::kRows), 10'000'000);
    EXPECT_GT(program.Ask(Probe::kPaints), paints);
    EXPECT_LT(program.Ask(Probe::kPaints), paints + 1'000);  // frames of a burst are drawn together
    return updated;
  };
  // A busy machine makes a pause of some burst, behind which the list has come to rest.
  int bursts = 1;
  while (updatesOfABurst(bursts * 100'000) != 0 && bursts < 6) ++bursts;
  EXPECT_LT(bursts, 6);
}

TEST_F(ResultsList, FollowsItsThumb) {
  const int x = static_cast<int>(program.Ask(Probe::kClientWidth)) - 7;
  const int bottom = static_cast<int>(program.Ask(Probe::kClientHeight)) - 20;
  program.Drag(program.Window(), {x, FirstRow() + 5}, {x, bottom});
  WaitUntil("the end", [this] { return program.Ask(Probe::kScrollY) > 7'000; });
  program.Click(program.Window(), x, FirstRow() + 5);  // in the track: at once
  WaitUntil("the top", [this] { return program.Ask(Probe::kScrollY) == 0; });
}

TEST_F(ResultsList, KeepsColumnsThatWereDragged) {
  const int64_t before = program.Ask(Probe::kColumnWidth, 1);
  const int edge = static_cast<int>(program.Ask(Probe::kColumnWidth, 0) + before);
  program.Drag(program.Window(), {edge, HeaderY()}, {edge + 60, HeaderY()});
  WaitUntil("a wider column", [&] { return program.Ask(Probe::kColumnWidth, 1) == before + 60; });
  WaitUntil("its settings", [&] {
    const auto text = ReadTextFile(program.Settings().PathOf(u"window.ini"));
    return text && text->find(u"col1=340\n") != std::u16string::npos;
  });
  program.Drag(program.Window(), {edge + 60, HeaderY()}, {0, HeaderY()});
  WaitUntil("the least", [&] { return program.Ask(Probe::kColumnWidth, 1) == 30; });
}

TEST_F(ResultsList, RenamesByF2) {
  OpenEditor(3);
  program.Screenshot("rename");
  program.Type(u"renamed file");  // in the place of the stem, which is selected
  program.Press(VK_RETURN);
  WaitForNoEditor();
  EXPECT_TRUE(fs::exists(program.Drive().HostPath() / "docs" / "renamed file.txt"));
  EXPECT_FALSE(fs::exists(program.Drive().HostPath() / "docs" / NameOf(3)));
  program.Click(program.SearchBox(), 100, 20);
  program.PressCtrl(u'A');
  program.SearchFor(u"renamed");
  EXPECT_EQ(program.Ask(Probe::kRows), 1);
}

TEST_F(ResultsList, RenamesToTheSameNameInAnotherCase) {
  OpenEditor(3);
  program.Type(u"FILE-003");
  program.Press(VK_RETURN);
  WaitForNoEditor();
  // Wine keeps the case of a name that is there; what the list shows is what was asked for.
  EXPECT_EQ(program.Ask(Probe::kRows), kFiles);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 3);
  SendMessageW(program.Window(), WM_KEYDOWN, VK_F2, 0);  // a second click on it could be a double click
  WaitUntil("the editor", [this] { return program.Ask(Probe::kRenameFocused) == 1; });
  EXPECT_EQ(program.TextOf(Editor()), u"FILE-003.txt");
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
}

TEST_F(ResultsList, KeepsItsFilterOverARename) {
  program.Click(GetDlgItem(program.Window(), 202), 20, 20);  // Documents
  program.ExpectTitle(u"Quilmark - Filter: Documents | Hits: 200");
  OpenEditor(3);
  program.Type(u"other");
  program.Press(VK_RETURN);
  WaitForNoEditor();
  program.ExpectTitle(u"Quilmark - Filter: Documents | Hits: 200");
  EXPECT_EQ(Selected(), 0) << "rows of another set";
  EXPECT_TRUE(fs::exists(program.Drive().HostPath() / "docs" / "other.txt"));
}

TEST_F(ResultsList, LeavesTheRowThatWasChosenWhenARenameEndsByIt) {
  OpenEditor(3);
  program.Type(u"other");
  ClickRow(6);
  WaitForNoEditor();
  EXPECT_TRUE(fs::exists(program.Drive().HostPath() / "docs" / "other.txt"));
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 6);
}

TEST_F(ResultsList, KeepsAHalfTypedNameWhileItScrolls) {
  const HWND editor = OpenEditor(3);
  const auto place = [&] {
    RECT rect = {};
    GetWindowRect(editor, &rect);
    MapWindowPoints(nullptr, program.Window(), reinterpret_cast<POINT*>(&rect), 2);
    return POINT{rect.left, rect.top};
  };
  const POINT before = place();
  program.Type(u"other");
  TurnAtOnce(-WHEEL_DELTA / 2);
  EXPECT_EQ(place().y, before.y - 50);
  TurnAtOnce(-10 * WHEEL_DELTA);
  EXPECT_LT(place().y, 0) << "its row is not in view";
  EXPECT_EQ(program.Ask(Probe::kRenameFocused), 1);
  program.Type(u" name");
  TurnAtOnce(20 * WHEEL_DELTA);
  EXPECT_EQ(place().y, before.y);
  EXPECT_EQ(place().x, before.x);
  EXPECT_EQ(Editor(), editor);
  WaitUntil("the typed name", [&] { return program.TextOf(editor) == u"other name.txt"; });
  program.Press(VK_RETURN);
  WaitForNoEditor();
  EXPECT_TRUE(fs::exists(program.Drive().HostPath() / "docs" / "other name.txt"));
}

TEST_F(ResultsList, KeepsAHalfTypedNameWhileAColumnIsDragged) {
  const HWND editor = OpenEditor(3);
  program.Type(u"other");
  RECT before = {}, after = {};
  GetWindowRect(editor, &before);
  const int edge =
      static_cast<int>(program.Ask(Probe::kColumnWidth, 0) + program.Ask(Probe::kColumnWidth, 1));
  program.Drag(program.Window(), {edge, HeaderY()}, {edge + 60, HeaderY()});
  WaitUntil("a wider editor", [&] {
    GetWindowRect(editor, &after);
    return after.right == before.right + 60;
  });
  EXPECT_EQ(after.left, before.left);
  EXPECT_EQ(program.TextOf(editor), u"other.txt");
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
}

TEST_F(ResultsList, ClosesTheEditorOfAFileThatIsGone) {
  for (const std::u16string& typed : {std::u16string(u"other"), std::u16string(u"no?name")}) {
    const int row = typed == u"other" ? 3 : 5;
    OpenEditor(row);
    program.Type(typed);
    ASSERT_TRUE(fs::remove(program.Drive().HostPath() / "docs" / NameOf(row)));
    program.Press(VK_RETURN);
    WaitForNoEditor();
    EXPECT_EQ(FindWindowW(L"#32770", L"Error"), nullptr);
  }
}

TEST_F(ResultsList, TellsOfAFailedRenameOverItsOwnWindowAlone) {
  const HWND editor = OpenEditor(3);
  program.Type(u"file-004");
  WaitUntil("the typed name", [&] { return program.TextOf(editor) == u"file-004.txt"; });
  const HWND other = CreateWindowExW(0, L"STATIC", L"another program", WS_OVERLAPPEDWINDOW | WS_VISIBLE,
                                     50, 50, 300, 200, nullptr, nullptr, nullptr, nullptr);
  SetForegroundWindow(other);
  WaitUntil("the other window in front", [&] {
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
    return program.Ask(Probe::kRenameFocused) == 0;
  });
  EXPECT_EQ(FindWindowW(L"#32770", L"Error"), nullptr);
  EXPECT_EQ(Editor(), editor);
  EXPECT_EQ(program.TextOf(editor), u"file-004.txt");
  DestroyWindow(other);
  WaitUntil("the focus in the editor", [this] {
    SetForegroundWindow(program.Window());
    return program.Ask(Probe::kRenameFocused) == 1;
  });
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
}

TEST_F(ResultsList, SortsUnderAFilter) {
  program.Click(GetDlgItem(program.Window(), 202), 20, 20);  // Documents
  program.ExpectTitle(u"Quilmark - Filter: Documents | Hits: 200");
  for (int click = 0; click < 2; ++click) {
    const int64_t before = program.Ask(Probe::kShownGeneration);
    program.Click(program.Window(), 100, HeaderY());  // name: from A, then from Z
    WaitUntil("the sorted rows", [&] { return program.Ask(Probe::kShownGeneration) > before; });
  }
  program.ExpectTitle(u"Quilmark - Filter: Documents | Hits: 200");
  OpenEditor(0);
  EXPECT_EQ(program.TextOf(Editor()), u"file-199.txt");
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
}

TEST_F(ResultsList, GoesFromControlToControlByTab) {
  program.Click(program.SearchBox(), 100, 20);
  program.Press(VK_TAB);
  WaitUntil("another control", [this] { return program.Ask(Probe::kSearchBoxFocused) == 0; });
  EXPECT_EQ(program.TextOf(program.SearchBox()), u"file");
  program.KeyDown(VK_SHIFT);
  program.Press(VK_TAB);
  program.KeyUp(VK_SHIFT);
  WaitUntil("the search box", [this] { return program.Ask(Probe::kSearchBoxFocused) == 1; });
}

TEST_F(ResultsList, LeavesTheNameAtEscapeAndAtANewSize) {
  OpenEditor(3);
  program.Type(u"other");
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
  OpenEditor(4);
  program.Type(u"other");
  SetWindowPos(program.Window(), nullptr, 0, 0, 1'000, 640, SWP_NOMOVE | SWP_NOZORDER);
  WaitForNoEditor();
  EXPECT_TRUE(fs::exists(program.Drive().HostPath() / "docs" / NameOf(3)));
  EXPECT_TRUE(fs::exists(program.Drive().HostPath() / "docs" / NameOf(4)));
}

TEST_F(ResultsList, RefusesCharactersThatNoNameHolds) {
  OpenEditor(3);
  program.Type(u"a*b");
  program.Press(VK_RETURN);
  HWND box = nullptr;
  WaitUntil("the message", [&] {
    box = FindWindowW(L"#32770", L"Error");
    return box != nullptr;
  });
  PostMessageW(box, WM_CLOSE, 0, 0);
  WaitUntil("the end of the message", [&] { return !IsWindow(box); });
  WaitUntil("the focus in the editor", [this] {
    SetForegroundWindow(program.Window());  // a screen's manager need not give it back
    return program.Ask(Probe::kRenameFocused) == 1;
  });
  program.Press(VK_ESCAPE);
  WaitForNoEditor();
  EXPECT_TRUE(fs::exists(program.Drive().HostPath() / "docs" / NameOf(3)));
}

TEST_F(ResultsList, SortsByItsHeaders) {
  program.Drive().MakeFile("docs/file-big.bin", std::string(5'000'000, 'x'));
  program.Drive().MakeFile("docs/file-mid.bin", std::string(50'000, 'x'));
  program.Exit();
  EXPECT_EQ(program.WaitForEnd(), 0u);
  program.StartAndWait();
  program.SearchFor(u"file");
  const auto clickHeader = [this](int x) {
    const int64_t before = program.Ask(Probe::kShownGeneration);
    program.Click(program.Window(), x, HeaderY());
    WaitUntil("the sorted rows", [&] { return program.Ask(Probe::kShownGeneration) > before; });
  };
  clickHeader(380);  // size: the largest first
  WaitUntil("the end of the sort", [this] { return program.Ask(Probe::kFirstRowSize) == 5'000'000; });
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("sorted-by-size");
  clickHeader(380);
  WaitUntil("the smallest", [this] { return program.Ask(Probe::kFirstRowSize) == 0; });
  clickHeader(100);  // name: from A
  clickHeader(100);
  WaitUntil("from Z", [this] { return program.Ask(Probe::kFirstRowSize) == 50'000; });
}

TEST_F(ResultsList, LearnsSizesAndDatesOfTheRowsInView) {
  WaitUntil("the size of the first row", [this] { return program.Ask(Probe::kFirstRowSize) == 0; });
  program.Turn({400, 400}, -3);
  program.Ask(Probe::kRepaint, 1);
  program.Screenshot("attributes");
}

TEST_F(ResultsList, ShowsThreeViews) {
  for (const uint32_t view : {1u, 2u, 0u}) {
    program.Turn({400, 400}, -3);
    WaitUntil("three notches", [this] { return program.Ask(Probe::kScrollY) == 300; });
    program.Ask(Probe::kSetView, view);
    EXPECT_EQ(program.Ask(Probe::kScrollY), 0);
    program.Ask(Probe::kRepaint, 1);
    program.Screenshot("view-" + std::to_string(view));
  }
}

TEST_F(ResultsList, ShowsItsHeaderWithoutRowsAndTakesAPressThere) {
  // Pixels of a band, five high, that are not the colour of an empty list.
  const Color empty = ThemeDefaults(program.Ask(Probe::kDarkTheme) != 0).surface;
  const auto inkAt = [&](int middle) {
    int ink = 0;
    for (int y = middle - 2; y <= middle + 2; ++y) {
      for (int x = 70; x < 200; x += 2) ink += PixelAt(x, y) == empty ? 0 : 1;
    }
    return ink;
  };
  const int firstRow = FirstRow() + kPitch / 2;
  program.Ask(Probe::kRepaint, 1);
  EXPECT_GT(inkAt(firstRow), 0);
  program.Click(program.SearchBox(), 100, 20);
  program.SearchFor(u"zzz");
  EXPECT_EQ(program.Ask(Probe::kRows), 0);
  program.Ask(Probe::kRepaint, 1);
  EXPECT_EQ(inkAt(firstRow), 0);
  EXPECT_GT(inkAt(HeaderY()), 0);
  program.Screenshot("no-rows");
  // A row that is selected while there are none to see.
  program.Ask(Probe::kSelectRow, 0);
  EXPECT_EQ(program.Ask(Probe::kFocusRow), 0);
  ClickRow(0);
  WaitUntil("no selection", [this] { return program.Ask(Probe::kFocusRow) == -1; });
}

TEST_F(ResultsList, ShrinksThePathColumnWhenNarrowerRowsComeIntoView) {
  // Far down in the order of the names, and the only one that needs a wide column.
  const std::string deep = "zz/" + std::string(100, 'd') + "/" + std::string(100, 'e');
  program.Drive().MakeFile(deep + "/file-zzz.txt");
  program.Exit();
  EXPECT_EQ(program.WaitForEnd(), 0u);
  program.Settings().MakeFile("window.ini", "width=1400\nheight=700\ncol5=200\n");
  program.StartAndWait();
  program.SearchFor(u"file");
  EXPECT_EQ(program.Ask(Probe::kRows), kFiles + 1);
  ClickHeader(100);  // by name
  WaitUntil("the top", [this] { return program.Ask(Probe::kScrollY) == 0; });
  const int64_t before = program.Ask(Probe::kPathWidth);
  EXPECT_EQ(program.Ask(Probe::kBarLimit, 113), 0) << "everything fits";
  TurnAtOnce(-100 * WHEEL_DELTA);
  TurnAtOnce(-100 * WHEEL_DELTA);
  WaitUntil("a wide column", [&] { return program.Ask(Probe::kPathWidth) > before; });
  WaitUntil("a way to the side", [this] { return program.Ask(Probe::kBarLimit, 113) > 200; });
  TurnAtOnce(-5 * WHEEL_DELTA, MK_SHIFT);
  EXPECT_EQ(program.Ask(Probe::kScrollX), 200);
  TurnAtOnce(100 * WHEEL_DELTA);
  TurnAtOnce(100 * WHEEL_DELTA);
  WaitUntil("the former column", [&] { return program.Ask(Probe::kPathWidth) == before; });
  WaitUntil("no way to the side", [this] { return program.Ask(Probe::kBarLimit, 113) == 0; });
  EXPECT_EQ(program.Ask(Probe::kScrollX), 0);
}

TEST_F(ResultsList, HoldsNoMoreObjectsAfterAnHourOfScrolling) {
  const auto scroll = [this](int rounds) {
    for (int round = 0; round < rounds; ++round) {
      for (int i = 0; i < 60; ++i) {
        const int delta = (round % 2 == 0 ? -1 : 1) * WHEEL_DELTA;
        PostMessageW(program.Window(), WM_MOUSEWHEEL, static_cast<WPARAM>(MAKELONG(0, delta)),
                     MAKELPARAM(600, 600));
      }
      program.Ask(Probe::kRepaint, 2);
    }
  };
  // What comes late makes objects of its own: the counts, and the attributes of the rows in view.
  WaitUntil("the counts", [this] {
    return program.TextOf(GetDlgItem(program.Window(), 200)) == u"All Files\r\n(200)";
  });
  WaitUntil("the size of the first row", [this] { return program.Ask(Probe::kFirstRowSize) >= 0; });
  scroll(20);  // through all rows, down and up
  // What has yet to come to the rows may need some now. A leak grows in each series.
  std::string counts;
  const auto grows = [&] {
    const int64_t before = program.Ask(Probe::kGdiObjects);
    scroll(60);  // a turn of the wheel a second
    counts += std::to_string(before) + " ";
    return program.Ask(Probe::kGdiObjects) > before;
  };
  int series = 0;
  while (grows() && ++series < 6) continue;
  EXPECT_LT(series, 6) << counts;
}

}  // namespace
}  // namespace quilmark
