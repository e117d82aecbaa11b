#include "shell/win32/controls/native_controls.h"

#include <gtest/gtest.h>

#include <commctrl.h>

#include <utility>

#include "canvas/scale.h"
#include "shell/win32/controls/control_window.h"
#include "shell/win32/controls/controls.h"
#include "support/object_counts.h"

namespace quilmark {
namespace {

constexpr int kBox = 101, kRange = 108, kChoice = 106, kFrom = 111, kFirst = 200, kSecond = 201;

std::vector<ControlSpec> OneOfEach() {
  return {{.kind = ControlKind::kCombo,
           .id = kChoice,
           .listWidth = 240,
           .items = {u"all", u"small", u"large"},
           .chosen = 1},
          {.kind = ControlKind::kSearchBox, .id = kBox, .isEnabled = false, .longest = 12},
          {.kind = ControlKind::kEdit, .id = kRange, .text = u"1-7", .longest = 127},
          {.kind = ControlKind::kDay, .id = kFrom, .day = 20'250'314},
          {.kind = ControlKind::kTag, .id = kFirst, .text = u"Pictures\r\n3"},
          {.kind = ControlKind::kTag, .id = kSecond, .text = u"Music\r\n0"}};
}

const std::vector<ControlPlace> kPlaces = {
    {kChoice, {10, 10, 170, 44}}, {kBox, {180, 10, 480, 44}},    {kRange, {10, 60, 170, 94}},
    {kFrom, {180, 60, 340, 94}},  {kFirst, {10, 110, 130, 150}}, {kSecond, {140, 110, 260, 150}}};

std::vector<ControlPlace> Without(int id) {
  std::vector<ControlPlace> places = kPlaces;
  std::erase_if(places, [id](const ControlPlace& place) { return place.id == id; });
  return places;
}

std::vector<ControlPlace> WithDisabled(int id) {
  std::vector<ControlPlace> places = kPlaces;
  for (ControlPlace& place : places) place.isEnabled = place.id != id;
  return places;
}

class NativeControlsTest : public testing::Test {
 protected:
  NativeControlsTest() { window.Make(OneOfEach()); }
  HWND At(int id) const { return window.controls.HandleOf(id); }
  void Place() {
    window.controls.Place(kPlaces);
    DispatchAll();
    window.TakePictures();
  }
  void ExpectTold(const std::vector<ControlEvent>& events) { EXPECT_EQ(window.TakeEvents(), events); }
  Rect LineOf(int id) const {
    RECT rect = {};
    SendMessageW(At(id), EM_GETRECT, 0, reinterpret_cast<LPARAM>(&rect));
    return FromRECT(rect);
  }
  void ExpectCentred(int id) const {
    const Rect line = LineOf(id);
    const int bottom = ClientRectOf(At(id)).bottom;
    EXPECT_GT(line.top, 0);
    EXPECT_NEAR(line.top, bottom - line.bottom, 1);
    EXPECT_GE(Height(line), window.Fonts().LineHeight(FontRole::kMain));
  }

  ControlWindow window;
};

TEST_F(NativeControlsTest, AreMadeHiddenWithWhatTheyHold) {
  constexpr std::u16string_view kClasses[] = {u"ComboBox",          u"Edit",   u"Edit",
                                              u"SysDateTimePick32", u"Button", u"Button"};
  HWND child = GetWindow(window.Handle(), GW_CHILD);
  size_t made = 0;
  for (const ControlSpec& spec : OneOfEach()) {
    SCOPED_TRACE(spec.id);
    EXPECT_EQ(child, At(spec.id));
    EXPECT_EQ(GetDlgCtrlID(child), spec.id);
    EXPECT_EQ(ClassOf(child), kClasses[made++]);
    EXPECT_FALSE(IsVisibleStyle(child));
    EXPECT_NE(GetWindowLongPtrW(child, GWL_STYLE) & WS_TABSTOP, 0);
    EXPECT_EQ(window.controls.IsEnabled(spec.id), spec.isEnabled);
    if (spec.kind != ControlKind::kCombo) {
      EXPECT_EQ(TextOf(child).starts_with(spec.text), true);
    }
    child = GetWindow(child, GW_HWNDNEXT);
  }
  EXPECT_EQ(child, nullptr);
  EXPECT_EQ(SendMessageW(At(kChoice), CB_GETCOUNT, 0, 0), 3);
  EXPECT_EQ(SendMessageW(At(kChoice), CB_GETCURSEL, 0, 0), 1);
  EXPECT_EQ(SendMessageW(At(kBox), EM_GETLIMITTEXT, 0, 0), 12);
  EXPECT_EQ(window.controls.DayOf(kFrom), 20'250'314);
  ExpectTold({});
}

TEST_F(NativeControlsTest, ShowTodayWhereNoDayWasGiven) {
  const ControlSpec spec = {.kind = ControlKind::kDay, .id = 112};
  window.Make({&spec, 1});
  SYSTEMTIME now = {};
  GetLocalTime(&now);
  EXPECT_EQ(window.controls.DayOf(112) / 10'000, now.wYear);
  ExpectTold({});
}

TEST_F(NativeControlsTest, StandWhereTheyAreTold) {
  Place();
  for (const ControlPlace& place : kPlaces) {
    SCOPED_TRACE(place.id);
    EXPECT_TRUE(IsVisibleStyle(At(place.id)));
    EXPECT_EQ(FromRECT(RectInParent(At(place.id))).left, place.place.left);
    EXPECT_EQ(FromRECT(RectInParent(At(place.id))).top, place.place.top);
    EXPECT_EQ(ClientRectOf(At(place.id)).right, Width(place.place));
    EXPECT_EQ(ClientRectOf(At(place.id)).bottom, Height(place.place));
    EXPECT_TRUE(window.controls.IsEnabled(place.id));
  }
  EXPECT_EQ(SendMessageW(At(kChoice), CB_GETDROPPEDWIDTH, 0, 0), 240);
  ExpectTold({});
}

LRESULT CALLBACK CountMoves(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                            DWORD_PTR count) {
  if (message == WM_WINDOWPOSCHANGING) ++*reinterpret_cast<int*>(count);
  return DefSubclassProc(control, message, wParam, lParam);
}

TEST_F(NativeControlsTest, MoveOnlyWhereTheyMust) {
  Place();
  int moves = 0;
  for (const ControlPlace& place : kPlaces) {
    SetWindowSubclass(At(place.id), CountMoves, 7, reinterpret_cast<DWORD_PTR>(&moves));
  }
  window.controls.Place(kPlaces);
  EXPECT_EQ(moves, 0);
  window.controls.Place(Without(kFirst));
  const int hiding = moves;
  EXPECT_GT(hiding, 0);
  window.controls.Place(Without(kFirst));
  EXPECT_EQ(moves, hiding);
  for (const ControlPlace& place : kPlaces) RemoveWindowSubclass(At(place.id), CountMoves, 7);
}

TEST_F(NativeControlsTest, HideWhereTheyAreNotNamed) {
  Place();
  for (const ControlPlace& place : kPlaces) {
    SCOPED_TRACE(place.id);
    SetFocus(At(place.id));
    window.controls.Place(Without(place.id));
    EXPECT_FALSE(IsVisibleStyle(At(place.id)));
    EXPECT_EQ(GetFocus(), window.Handle());
    window.controls.Focus(place.id);
    EXPECT_EQ(GetFocus(), window.Handle());
    Place();
    EXPECT_TRUE(IsVisibleStyle(At(place.id)));
    window.controls.Focus(place.id);
    EXPECT_EQ(GetFocus(), At(place.id));
  }
}

TEST_F(NativeControlsTest, HideWhileTheirWindowIsHidden) {
  Place();
  ShowWindow(window.Handle(), SW_HIDE);
  window.controls.Place(Without(kBox));
  EXPECT_FALSE(IsVisibleStyle(At(kBox)));
  EXPECT_TRUE(IsVisibleStyle(At(kRange)));
}

TEST_F(NativeControlsTest, GiveTheFocusToTheWindowWhereTheyAreDisabled) {
  Place();
  for (const ControlPlace& place : kPlaces) {
    SCOPED_TRACE(place.id);
    window.controls.Focus(place.id);
    window.controls.Place(WithDisabled(place.id));
    EXPECT_FALSE(window.controls.IsEnabled(place.id));
    EXPECT_EQ(GetFocus(), window.Handle());
    window.controls.Focus(place.id);
    EXPECT_EQ(GetFocus(), window.Handle());
    Place();
    EXPECT_TRUE(window.controls.IsEnabled(place.id));
  }
}

TEST_F(NativeControlsTest, CentreTheirLine) {
  Place();
  ExpectCentred(kBox);
  ExpectCentred(kRange);
  EXPECT_EQ(LineOf(kBox).left, 14);
  std::vector<ControlPlace> higher = kPlaces;
  higher[1].place.bottom += 20;
  window.controls.Place(higher);
  ExpectCentred(kBox);
}

TEST_F(NativeControlsTest, TakeTheFontsOfAnotherScale) {
  Place();
  window.TakeScale(144);
  for (const ControlPlace& place : kPlaces) {
    SCOPED_TRACE(place.id);
    const FontRole role = place.id >= kFirst ? FontRole::kFilter : FontRole::kMain;
    EXPECT_EQ(FontOf(At(place.id)), window.Fonts().Of(role));
  }
  ExpectCentred(kBox);
  ExpectCentred(kRange);
  EXPECT_EQ(LineOf(kBox).left, 21);
}

TEST_F(NativeControlsTest, HaveComboFieldsOfEveryHeight) {
  for (const uint32_t dpi : {96u, 144u, 192u}) {
    window.TakeScale(dpi);
    for (const int height : {ScaleFor(dpi, 28), ScaleFor(dpi, 34), ScaleFor(dpi, 40)}) {
      SCOPED_TRACE(testing::Message() << dpi << " " << height);
      const ControlPlace place = {kChoice, {10, 10, 300, 10 + height}};
      window.controls.Place({&place, 1});
      EXPECT_EQ(ClientRectOf(At(kChoice)).bottom, height);
      EXPECT_EQ(SendMessageW(At(kChoice), CB_GETITEMHEIGHT, 0, 0), ScaleFor(dpi, 28));
    }
  }
}

TEST_F(NativeControlsTest, TellWhatIsTyped) {
  Place();
  window.controls.Focus(kBox);
  Type(At(kBox), u"ab");
  ExpectTold({{.kind = ControlEvent::kText, .id = kBox, .text = u"a"},
              {.kind = ControlEvent::kText, .id = kBox, .text = u"ab"}});
  SendMessageW(At(kRange), EM_SETSEL, 0, -1);
  SendMessageW(At(kRange), EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(L"5-9"));
  ExpectTold({{.kind = ControlEvent::kText, .id = kRange, .text = u"5-9"}});
}

TEST_F(NativeControlsTest, TakeNoMoreThanTheirLimit) {
  Place();
  Type(At(kBox), u"0123456789abcdef");
  EXPECT_EQ(TextOf(At(kBox)), u"0123456789ab");
  EXPECT_EQ(window.TakeEvents().back().text, u"0123456789ab");
  window.controls.SetText(kBox, u"longer than a user could make it");
  Press(At(kBox), VK_RETURN);
  ExpectTold({{.kind = ControlEvent::kEnter, .id = kBox, .text = u"longer than "}});
}

TEST_F(NativeControlsTest, TellOfEnterInAnEditAndOfEscapeInTheSearchBox) {
  Place();
  Type(At(kBox), u"a");
  window.TakeEvents();
  for (const bool isTaken : {true, false}) {
    window.answer = [isTaken](const ControlEvent&) { return isTaken; };
    Press(At(kBox), VK_RETURN);
    Press(At(kBox), VK_ESCAPE);
    ExpectTold({{.kind = ControlEvent::kEnter, .id = kBox, .text = u"a"},
                {.kind = ControlEvent::kEscape, .id = kBox, .text = u"a"}});
    Press(At(kRange), VK_RETURN);
    Press(At(kRange), VK_ESCAPE);
    ExpectTold({{.kind = ControlEvent::kEnter, .id = kRange, .text = u"1-7"}});
    EXPECT_EQ(TextOf(At(kBox)), u"a");
    EXPECT_EQ(TextOf(At(kRange)), u"1-7");
  }
}

TEST_F(NativeControlsTest, TellWhatIsChosen) {
  Place();
  window.controls.Focus(kChoice);
  Press(At(kChoice), VK_DOWN);
  ExpectTold({{.kind = ControlEvent::kChosen, .id = kChoice, .value = 2}});
  Press(At(kChoice), VK_HOME);
  ExpectTold({{.kind = ControlEvent::kChosen, .id = kChoice, .value = 0}});
}

TEST_F(NativeControlsTest, TellWhichTagIsClicked) {
  Place();
  SendMessageW(At(kSecond), WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  SendMessageW(At(kSecond), WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  ExpectTold({{.kind = ControlEvent::kClicked, .id = kSecond}});
  window.controls.Focus(kFirst);
  Press(At(kFirst), VK_SPACE);
  ExpectTold({{.kind = ControlEvent::kClicked, .id = kFirst}});
}

TEST_F(NativeControlsTest, TellTheDayThatIsPicked) {
  Place();
  window.controls.Focus(kFrom);
  Press(At(kFrom), VK_RIGHT);  // to a part of the day
  Press(At(kFrom), VK_UP);
  const std::vector<ControlEvent> events = window.TakeEvents();
  ASSERT_FALSE(events.empty());
  EXPECT_EQ(events.back().kind, ControlEvent::kDay);
  EXPECT_EQ(events.back().id, kFrom);
  EXPECT_NE(events.back().value, 20'250'314);
  EXPECT_EQ(events.back().value, window.controls.DayOf(kFrom));
}

TEST_F(NativeControlsTest, TellNothingOfWhatTheProgramWrites) {
  Place();
  window.controls.SetText(kBox, u"a search");
  window.controls.SetText(kRange, u"2-3");
  window.controls.SetText(kFirst, u"Pictures\r\n4");
  window.controls.SetItems(kChoice, {u"one", u"two"}, 1);
  window.controls.SetDay(kFrom, 20'241'231);
  window.controls.SetDay(kFrom, 0);
  ExpectTold({});
  EXPECT_EQ(TextOf(At(kBox)), u"a search");
  EXPECT_EQ(TextOf(At(kRange)), u"2-3");
  EXPECT_EQ(TextOf(At(kFirst)), u"Pictures\r\n4");
  EXPECT_EQ(SendMessageW(At(kChoice), CB_GETCOUNT, 0, 0), 2);
  EXPECT_EQ(SendMessageW(At(kChoice), CB_GETCURSEL, 0, 0), 1);
  EXPECT_EQ(window.controls.DayOf(kFrom), 20'241'231);
  window.controls.SetItems(kChoice, {u"one", u"two"}, 9);
  EXPECT_EQ(SendMessageW(At(kChoice), CB_GETCURSEL, 0, 0), 0);
  Type(At(kBox), u"!");
  EXPECT_EQ(window.TakeEvents().size(), 1u);
}

// Not every system keeps quiet of what is written by a message.
LRESULT CALLBACK TellAllTheSame(HWND control, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR code,
                                DWORD_PTR) {
  const LRESULT result = DefSubclassProc(control, message, wParam, lParam);
  const int id = GetDlgCtrlID(control);
  if (message == DTM_SETSYSTEMTIME) {
    const NMHDR notice = {control, static_cast<UINT_PTR>(id), static_cast<UINT>(DTN_DATETIMECHANGE)};
    SendMessageW(GetParent(control), WM_NOTIFY, notice.idFrom, reinterpret_cast<LPARAM>(&notice));
  }
  if (message == WM_SETTEXT || message == CB_SETCURSEL) {
    SendMessageW(GetParent(control), WM_COMMAND, MAKEWPARAM(id, code),
                 reinterpret_cast<LPARAM>(control));
  }
  return result;
}

TEST_F(NativeControlsTest, TellNothingOfWhatASystemTellsAllTheSame) {
  Place();
  SetWindowSubclass(At(kBox), TellAllTheSame, EN_CHANGE, 0);
  SetWindowSubclass(At(kChoice), TellAllTheSame, CBN_SELCHANGE, 0);
  SetWindowSubclass(At(kFrom), TellAllTheSame, 0, 0);
  window.controls.SetText(kBox, u"a search");
  window.controls.SetItems(kChoice, {u"one", u"two"}, 1);
  window.controls.SetDay(kFrom, 20'241'231);
  ExpectTold({});
  SendMessageW(At(kChoice), CB_SETCURSEL, 0, 0);
  EXPECT_EQ(window.TakeEvents().size(), 1u);
}

TEST_F(NativeControlsTest, KeepTheCaretWhereTheTextIsTheSame) {
  Place();
  window.controls.SetText(kBox, u"a search");
  SendMessageW(At(kBox), EM_SETSEL, 3, 5);
  window.controls.SetText(kBox, u"a search");
  EXPECT_EQ(SendMessageW(At(kBox), EM_GETSEL, 0, 0), MAKELRESULT(3, 5));
}

TEST_F(NativeControlsTest, LeadTabThroughWhatIsShownAndEnabled) {
  std::vector<ControlPlace> places = Without(kFrom);
  places.back().isEnabled = false;
  window.controls.Place(places);
  window.controls.Focus(kChoice);
  for (const int next : {kBox, kRange, kFirst, kChoice, kBox}) {
    Press(GetFocus(), VK_TAB);
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), next);
  }
  const HeldShift shift;
  for (const int former : {kChoice, kFirst, kRange, kBox}) {
    Press(GetFocus(), VK_TAB);
    EXPECT_EQ(GetDlgCtrlID(GetFocus()), former);
  }
}

TEST_F(NativeControlsTest, HaveTheirTagsPaintedByTheView) {
  Place();
  window.controls.RedrawTags();
  UpdateWindow(At(kFirst));
  UpdateWindow(At(kSecond));
  const std::vector<ControlPicture> pictures = window.TakePictures();
  ASSERT_EQ(pictures.size(), 2u);
  EXPECT_EQ(pictures[0].id, kFirst);
  EXPECT_EQ(pictures[0].place, (Rect{0, 0, 120, 40}));
  EXPECT_FALSE(pictures[0].isHot);
  EXPECT_FALSE(pictures[0].hasFocus);
  EXPECT_EQ(pictures[1].id, kSecond);
  const WindowDc dc(At(kFirst));
  EXPECT_EQ(GetPixel(dc.Get(), 60, 20), window.Context().palette.accent);
}

TEST_F(NativeControlsTest, SayWhichTagIsUnderTheMouse) {
  Place();
  SendMessageW(At(kSecond), WM_MOUSEMOVE, 0, MAKELPARAM(4, 4));
  UpdateWindow(At(kSecond));
  std::vector<ControlPicture> pictures = window.TakePictures();
  ASSERT_EQ(pictures.size(), 1u);
  EXPECT_EQ(pictures[0].id, kSecond);
  EXPECT_TRUE(pictures[0].isHot);
  SendMessageW(At(kSecond), WM_MOUSEMOVE, 0, MAKELPARAM(5, 4));
  UpdateWindow(At(kSecond));
  EXPECT_TRUE(window.TakePictures().empty());
  SendMessageW(At(kSecond), WM_MOUSELEAVE, 0, 0);
  UpdateWindow(At(kSecond));
  pictures = window.TakePictures();
  ASSERT_EQ(pictures.size(), 1u);
  EXPECT_FALSE(pictures[0].isHot);
}

TEST_F(NativeControlsTest, SayWhichTagHasTheFocus) {
  Place();
  window.controls.Focus(kFirst);
  UpdateWindow(At(kFirst));
  const std::vector<ControlPicture> pictures = window.TakePictures();
  ASSERT_FALSE(pictures.empty());
  EXPECT_EQ(pictures.back().id, kFirst);
  EXPECT_TRUE(pictures.back().hasFocus);
}

TEST_F(NativeControlsTest, RedrawATagWhoseTextHasChanged) {
  Place();
  window.controls.SetText(kSecond, u"Music\r\n0");
  UpdateWindow(At(kSecond));
  EXPECT_TRUE(window.TakePictures().empty());
  window.controls.SetText(kSecond, u"Music\r\n8");
  UpdateWindow(At(kSecond));
  EXPECT_FALSE(window.TakePictures().empty());
}

TEST_F(NativeControlsTest, MayHideWhatTells) {
  Place();
  window.answer = [this](const ControlEvent& event) {
    window.controls.Place(Without(event.id));
    return true;
  };
  window.controls.Focus(kChoice);
  Press(At(kChoice), VK_DOWN);
  EXPECT_FALSE(IsVisibleStyle(At(kChoice)));
  window.controls.Place(kPlaces);
  Press(At(kBox), VK_RETURN);
  EXPECT_FALSE(IsVisibleStyle(At(kBox)));
  window.controls.Place(kPlaces);
  Type(At(kRange), u"4");
  EXPECT_FALSE(IsVisibleStyle(At(kRange)));
  window.controls.Place(kPlaces);
  SendMessageW(At(kFirst), BM_CLICK, 0, 0);
  EXPECT_FALSE(IsVisibleStyle(At(kFirst)));
}

HWND ListOf(HWND combo) {
  COMBOBOXINFO info = {};
  info.cbSize = sizeof info;
  GetComboBoxInfo(combo, &info);
  return info.hwndList;
}

// What the list paints where no item stands.
Color GroundOf(HWND list) {
  const WindowDc screen(list);
  const UniqueMemoryDc dc(CreateCompatibleDC(screen.Get()));
  const UniqueBitmap bitmap(CreateCompatibleBitmap(screen.Get(), 4, 4));
  const SelectScope selected(dc.Get(), bitmap.Get());
  SendMessageW(list, WM_ERASEBKGND, reinterpret_cast<WPARAM>(dc.Get()), 0);
  return GetPixel(dc.Get(), 2, 2);
}

TEST_F(NativeControlsTest, DropTheirListDown) {
  Place();
  const HWND list = ListOf(At(kChoice));
  const auto cycle = [this, list] {
    SendMessageW(At(kChoice), CB_SHOWDROPDOWN, TRUE, 0);
    DispatchAll();
    EXPECT_TRUE(IsWindowVisible(list));
    EXPECT_EQ(GroundOf(list), window.Context().palette.editWell);
    SendMessageW(At(kChoice), CB_SHOWDROPDOWN, FALSE, 0);
    DispatchAll();
    EXPECT_FALSE(IsWindowVisible(list));
    EXPECT_NE(GroundOf(list), window.Context().palette.editWell);
  };
  for (int warm = 0; warm < 5; ++warm) cycle();
  const int64_t former = CountGdiObjects();
  for (int round = 0; round < 50; ++round) cycle();
  EXPECT_LE(CountGdiObjects(), former + 2);
  ExpectTold({});
}

TEST_F(NativeControlsTest, DropTheirCalendarDown) {
  Place();
  const RECT client = ClientRectOf(At(kFrom));
  const LPARAM button = MAKELPARAM(client.right - 8, client.bottom / 2);
  SendMessageW(At(kFrom), WM_LBUTTONDOWN, MK_LBUTTON, button);
  SendMessageW(At(kFrom), WM_LBUTTONUP, 0, button);
  DispatchAll();
  const auto calendar = reinterpret_cast<HWND>(SendMessageW(At(kFrom), DTM_GETMONTHCAL, 0, 0));
  EXPECT_TRUE(IsWindowVisible(calendar));
  EXPECT_EQ(static_cast<Color>(SendMessageW(calendar, MCM_GETCOLOR, MCSC_MONTHBK, 0)),
            window.Context().palette.alternateRow);
  SendMessageW(At(kFrom), WM_LBUTTONDOWN, MK_LBUTTON, button);
  SendMessageW(At(kFrom), WM_LBUTTONUP, 0, button);
  DispatchAll();
}

TEST_F(NativeControlsTest, SayHowHighRowsAre) {
  window.TakeScale(144);
  for (const auto& [row, height] : {std::pair(UINT{0}, 42u), std::pair(static_cast<UINT>(-1), 54u)}) {
    MEASUREITEMSTRUCT item = {.CtlType = ODT_COMBOBOX, .CtlID = kChoice, .itemID = row};
    EXPECT_EQ(window.controls.TakeMessage(WM_MEASUREITEM, kChoice, reinterpret_cast<LPARAM>(&item)),
              TRUE);
    EXPECT_EQ(item.itemHeight, height);
  }
}

TEST_F(NativeControlsTest, TakeOnlyMessagesOfTheirOwn) {
  Place();
  NativeControls& controls = window.controls;
  const auto handle = reinterpret_cast<LPARAM>(At(kFirst));
  EXPECT_FALSE(controls.TakeMessage(WM_COMMAND, MAKEWPARAM(999, BN_CLICKED), handle));
  EXPECT_FALSE(controls.TakeMessage(WM_COMMAND, MAKEWPARAM(kFirst, BN_CLICKED), 0));  // of a menu
  EXPECT_FALSE(controls.TakeMessage(WM_COMMAND, MAKEWPARAM(kFirst, BN_SETFOCUS), handle));
  EXPECT_FALSE(controls.TakeMessage(WM_SIZE, 0, MAKELPARAM(100, 100)));
  const NMHDR notice = {At(kBox), kBox, static_cast<UINT>(DTN_DATETIMECHANGE)};
  EXPECT_FALSE(controls.TakeMessage(WM_NOTIFY, kBox, reinterpret_cast<LPARAM>(&notice)));
  const DRAWITEMSTRUCT menu = {.CtlType = ODT_MENU};
  EXPECT_FALSE(controls.TakeMessage(WM_DRAWITEM, 0, reinterpret_cast<LPARAM>(&menu)));
  ExpectTold({});
}

TEST_F(NativeControlsTest, PassOverNumbersThatNoneHas) {
  NativeControls& controls = window.controls;
  controls.SetText(999, u"text");
  controls.SetText(kChoice, u"text");
  controls.SetItems(kBox, {u"one"}, 0);
  controls.SetDay(kBox, 20'250'101);
  controls.Focus(999);
  const ControlPlace place = {999, {0, 0, 10, 10}};
  controls.Place({&place, 1});
  EXPECT_FALSE(controls.IsEnabled(999));
  EXPECT_EQ(controls.DayOf(kBox), 0);
  EXPECT_EQ(controls.HandleOf(999), nullptr);
  EXPECT_EQ(TextOf(At(kBox)), u"");
  ExpectTold({});
}

}  // namespace
}  // namespace quilmark
