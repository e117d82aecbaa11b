#include "shell/win32/controls/calendar_letters.h"

#include <array>
#include <optional>
#include <string>

#include "config/contrast.h"
#include "platform/format.h"
#include "platform/win32/wide.h"
#include "shell/win32/controls/controls.h"

namespace quilmark {

namespace {

constexpr int kDays = 7;

MCHITTESTINFO HitAt(HWND calendar, int x, int y) {
  MCHITTESTINFO hit = {};
  hit.cbSize = MCHITTESTINFO_V1_SIZE;
  hit.pt = {x, y};
  SendMessageW(calendar, MCM_HITTEST, 0, reinterpret_cast<LPARAM>(&hit));
  return hit;
}

bool IsWeekdayAt(HWND calendar, int x, int y) { return HitAt(calendar, x, y).uHit == MCHT_CALENDARDAY; }

bool IsDayAt(HWND calendar, int x, int y, const SYSTEMTIME& day) {
  const MCHITTESTINFO hit = HitAt(calendar, x, y);
  return hit.uHit == MCHT_CALENDARDATE && hit.st.wDay == day.wDay && hit.st.wMonth == day.wMonth &&
         hit.st.wYear == day.wYear;
}

// No message tells where the names stand: they stand where a hit test finds one.
std::optional<Rect> PlaceOfNames(HWND calendar) {
  const RECT client = ClientRectOf(calendar);
  const int middle = client.right / 2;
  Rect place = {0, 0, client.right, client.bottom};
  while (place.top < client.bottom && !IsWeekdayAt(calendar, middle, place.top)) ++place.top;
  if (place.top == client.bottom) return std::nullopt;
  place.bottom = place.top;
  while (place.bottom < client.bottom && IsWeekdayAt(calendar, middle, place.bottom)) ++place.bottom;
  const int y = (place.top + place.bottom) / 2;
  while (place.left < middle && !IsWeekdayAt(calendar, place.left, y)) ++place.left;
  while (place.right > middle && !IsWeekdayAt(calendar, place.right - 1, y)) --place.right;
  return place;
}

// 0 is Monday, as the system counts its names.
int FirstWeekday(HWND calendar) {
  return LOWORD(SendMessageW(calendar, MCM_GETFIRSTDAYOFWEEK, 0, 0)) % kDays;
}

std::u16string NameOfWeekday(int day) {
  std::array<wchar_t, 80> name = {};
  GetLocaleInfoEx(LOCALE_NAME_USER_DEFAULT, static_cast<LCTYPE>(LOCALE_SSHORTESTDAYNAME1 + day),
                  name.data(), static_cast<int>(name.size()));
  return FromWide(name.data());
}

// The ground of a calendar, read off the end of its last line, where no day stands: a theme of the system
// may draw it in other colours than it was given.
Color GroundOf(HWND calendar, HDC dc, const Rect& names, const Palette& palette) {
  const COLORREF seen = GetPixel(dc, names.right - 4, ClientRectOf(calendar).bottom - 4);
  return seen == CLR_INVALID ? palette.alternateRow : seen;
}

Rect ColumnOf(const Rect& names, int column) {
  const int width = names.right - names.left;
  return {names.left + width * column / kDays, names.top, names.left + width * (column + 1) / kDays,
          names.bottom};
}

// Draws in the font of the calendar, which is selected.
void DrawMiddle(HDC dc, const Rect& place, const std::u16string& text, Color color) {
  SetTextColor(dc, color);
  RECT rect = ToRECT(place);
  DrawTextW(dc, Wide(text), static_cast<int>(text.size()), &rect,
            DT_SINGLELINE | DT_VCENTER | DT_CENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

void DrawNames(HDC dc, HWND calendar, const Rect& names, const Palette& palette) {
  const Color ground = GroundOf(calendar, dc, names, palette);
  // The line below them is the system's.
  FillWith(dc, {names.left, names.top, names.right, names.bottom - 1}, ground);
  const int first = FirstWeekday(calendar);
  for (int column = 0; column < kDays; ++column) {
    DrawMiddle(dc, ColumnOf(names, column), NameOfWeekday((first + column) % kDays),
               ReadableOn(ground, palette.muted));
  }
}

std::optional<Rect> PlaceOfDay(HWND calendar, const Rect& names, const SYSTEMTIME& day) {
  const RECT client = ClientRectOf(calendar);
  for (int column = 0; column < kDays; ++column) {
    Rect place = ColumnOf(names, column);
    const int x = (place.left + place.right) / 2;
    place.top = names.bottom;
    while (place.top < client.bottom && !IsDayAt(calendar, x, place.top, day)) ++place.top;
    place.bottom = place.top;
    while (place.bottom < client.bottom && IsDayAt(calendar, x, place.bottom, day)) ++place.bottom;
    if (place.bottom > place.top) return place;
  }
  return std::nullopt;
}

void DrawChosenDay(HDC dc, HWND calendar, const Rect& names, const Palette& palette) {
  SYSTEMTIME day = {};
  if (!SendMessageW(calendar, MCM_GETCURSEL, 0, reinterpret_cast<LPARAM>(&day))) return;
  const auto place = PlaceOfDay(calendar, names, day);
  if (!place) return;
  FillWith(dc, {place->left + 1, place->top + 1, place->right - 1, place->bottom - 1}, palette.accent);
  DrawMiddle(dc, *place, FormatText(u"%d", day.wDay), palette.accentText);
}

}  // namespace

void DrawCalendarLetters(HWND calendar, const Palette& palette) {
  const auto names = PlaceOfNames(calendar);
  if (!names) return;  // months or years are on show
  const WindowDc dc(calendar);
  const SelectScope font(dc.Get(), FontOf(calendar));
  SetBkMode(dc.Get(), TRANSPARENT);
  DrawNames(dc.Get(), calendar, *names, palette);
  DrawChosenDay(dc.Get(), calendar, *names, palette);
}

}  // namespace quilmark
