#include "shell/win32/controls/date_picker.h"

#include <algorithm>
#include <cstdlib>

#include "shell/win32/controls/calendar_letters.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/drop_list.h"
#include "shell/win32/controls/edit_keys.h"

namespace quilmark {

namespace {

constexpr COLORREF kTrailingText = 9'139'300;  // days of the neighbouring months
constexpr int kWhite = 255;

// The control's own picture is dark on light in every theme: each pixel becomes the shade between text
// and background that is as light.
void TakePaletteColors(uint32_t* pixels, size_t count, const Palette& palette) {
  const Color text = palette.text, well = palette.editWell;
  for (size_t i = 0; i < count; ++i) {
    // A bitmap has blue in the low byte.
    const Color shown = RGB(pixels[i] >> 16 & 0xFF, pixels[i] >> 8 & 0xFF, pixels[i] & 0xFF);
    const Color mixed = MixColor(well, text, Luminance(shown) * 100 / kWhite);
    pixels[i] = static_cast<uint32_t>(RedOf(mixed) << 16 | GreenOf(mixed) << 8 | BlueOf(mixed));
  }
}

bool HasInk(const uint32_t* row, int width) {
  return std::any_of(row, row + width, [](uint32_t pixel) { return (pixel & 0xFFFFFF) != 0xFFFFFF; });
}

// Where the button begins. Its width is that of the system's scale and style; a picker that does not
// tell it is taken to have one as wide as a scrollbar.
int ButtonLeft(HWND picker, const RECT& client) {
  DATETIMEPICKERINFO info = {};
  info.cbSize = sizeof info;
  SendMessageW(picker, DTM_GETDATETIMEPICKERINFO, 0, reinterpret_cast<LPARAM>(&info));
  const LONG left = info.rcButton.left;
  return left > 0 && left < client.right ? left : client.right - GetSystemMetrics(SM_CXVSCROLL);
}

// Some systems put the date to the top of a field that is higher than their own.
void CentreDate(HDC dc, const uint32_t* pixels, const RECT& client, int buttonLeft) {
  constexpr int kEdge = 2, kWellPlaced = 2;
  const int textWidth = buttonLeft - kEdge;
  int top = kEdge, bottom = client.bottom - kEdge;
  const auto hasInk = [&](int y) {
    return HasInk(pixels + y * client.right + kEdge, textWidth - kEdge);
  };
  while (top < bottom && !hasInk(top)) ++top;
  while (bottom > top && !hasInk(bottom - 1)) --bottom;
  const int shift = (client.bottom - (bottom - top)) / 2 - top;
  if (textWidth <= kEdge || std::abs(shift) <= kWellPlaced) return;
  RECT scrolled = {kEdge, kEdge, textWidth, client.bottom - kEdge};
  ScrollDC(dc, 0, shift, &scrolled, &scrolled, nullptr, nullptr);
  const RECT bared = shift > 0 ? RECT{kEdge, 0, textWidth, top + shift}
                               : RECT{kEdge, bottom + shift, textWidth, client.bottom};
  FillWith(dc, bared, RGB(kWhite, kWhite, kWhite));
  GdiFlush();
}

void DrawField(HWND picker, HDC screen, const ViewContext& context) {
  const RECT client = ToRECT(context.client);
  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = client.right;
  info.bmiHeader.biHeight = -client.bottom;  // from the top
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const UniqueMemoryDc dc(CreateCompatibleDC(screen));
  const UniqueBitmap bitmap(CreateDIBSection(screen, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!dc || !bitmap) return;
  const SelectScope selected(dc.Get(), bitmap.Get());
  FillWith(dc.Get(), client, RGB(kWhite, kWhite, kWhite));
  DefSubclassProc(picker, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(dc.Get()), PRF_CLIENT);
  GdiFlush();
  CentreDate(dc.Get(), static_cast<const uint32_t*>(bits), client, ButtonLeft(picker, client));
  TakePaletteColors(static_cast<uint32_t*>(bits),
                    static_cast<size_t>(client.right) * static_cast<size_t>(client.bottom),
                    context.palette);
  FrameWith(dc.Get(), client, FrameColorOf(context));
  BitBlt(screen, 0, 0, client.right, client.bottom, dc.Get(), 0, 0, SRCCOPY);
}

LRESULT CALLBACK PickerProcedure(HWND picker, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR reference) {
  if (TakeTabKey(picker, message, wParam)) return 0;
  switch (message) {
    case WM_PAINT: {
      const PaintScope paint(picker);
      DrawField(picker, paint.Dc(), ContextOf(HostOf(reference), picker));
      return 0;
    }
    case WM_ERASEBKGND:
      return 1;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
      InvalidateRect(picker, nullptr, FALSE);
      break;
    case WM_NCDESTROY:
      LetGo(picker, PickerProcedure);
      break;
    default:
      break;
  }
  return DefSubclassProc(picker, message, wParam, lParam);
}

struct CalendarColor {
  int part;
  COLORREF color;
};

void ColorCalendar(HWND calendar, const Palette& palette) {
  const CalendarColor colors[] = {{MCSC_BACKGROUND, palette.surface},
                                  {MCSC_TITLEBK, palette.surface},
                                  {MCSC_TEXT, palette.text},
                                  {MCSC_TITLETEXT, palette.text},
                                  {MCSC_MONTHBK, palette.alternateRow},
                                  {MCSC_TRAILINGTEXT, kTrailingText}};
  for (const CalendarColor& row : colors) {
    SendMessageW(calendar, MCM_SETCOLOR, static_cast<WPARAM>(row.part), static_cast<LPARAM>(row.color));
  }
}

LRESULT CALLBACK CalendarProcedure(HWND calendar, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                   DWORD_PTR reference) {
  if (message == WM_NCDESTROY) LetGo(calendar, CalendarProcedure);
  const LRESULT result = DefSubclassProc(calendar, message, wParam, lParam);
  if (message == WM_PAINT) DrawCalendarLetters(calendar, HostOf(reference).Context().palette);
  return result;
}

// The calendar, and the popup around it, as large as one month needs.
void FitCalendar(HWND picker, HWND calendar) {
  RECT least = {};
  if (!SendMessageW(calendar, MCM_GETMINREQRECT, 0, reinterpret_cast<LPARAM>(&least))) return;
  const int width = std::max<int>(least.right - least.left,
                                  static_cast<int>(SendMessageW(calendar, MCM_GETMAXTODAYWIDTH, 0, 0)));
  const int height = least.bottom - least.top;
  SetWindowPos(calendar, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  const HWND popup = GetParent(calendar);
  if (popup == nullptr || popup == picker || popup == GetParent(picker)) return;
  RECT outer = {0, 0, width, height};
  AdjustWindowRectEx(&outer, static_cast<DWORD>(GetWindowLongPtrW(popup, GWL_STYLE)), FALSE,
                     static_cast<DWORD>(GetWindowLongPtrW(popup, GWL_EXSTYLE)));
  SetWindowPos(popup, nullptr, 0, 0, outer.right - outer.left, outer.bottom - outer.top,
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace

HWND MakeDatePicker(HWND parent, int id, ControlHost& host) {
  const HWND picker = MakeControl(parent, {DATETIMEPICK_CLASSW, WS_TABSTOP | DTS_SHORTDATEFORMAT}, id,
                                  host.Fonts().Of(FontRole::kMain));
  // The frame is drawn with the field.
  SetWindowLongPtrW(picker, GWL_EXSTYLE, GetWindowLongPtrW(picker, GWL_EXSTYLE) & ~WS_EX_CLIENTEDGE);
  TakeOver(picker, PickerProcedure, host);
  return picker;
}

void StyleDatePicker(HWND picker, ControlHost& host) {
  const auto calendar = reinterpret_cast<HWND>(SendMessageW(picker, DTM_GETMONTHCAL, 0, 0));
  if (!IsWindow(calendar)) return;
  ThemePopup(calendar, host.IsDark());
  ColorCalendar(calendar, host.Context().palette);
  TakeOver(calendar, CalendarProcedure, host);
  FitCalendar(picker, calendar);
}

int DayOf(HWND picker) {
  SYSTEMTIME time = {};
  if (SendMessageW(picker, DTM_GETSYSTEMTIME, 0, reinterpret_cast<LPARAM>(&time)) != GDT_VALID) return 0;
  return time.wYear * 10'000 + time.wMonth * 100 + time.wDay;
}

void SetDay(HWND picker, int day) {
  if (day == 0) return;
  SYSTEMTIME time = {};
  time.wYear = static_cast<WORD>(day / 10'000);
  time.wMonth = static_cast<WORD>(day / 100 % 100);
  time.wDay = static_cast<WORD>(day % 100);
  SendMessageW(picker, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&time));
}

}  // namespace quilmark
