#include "shell/win32/controls/edit_line.h"

#include <algorithm>

#include "canvas/scale.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/window_text.h"

namespace quilmark {

namespace {

constexpr int kLeftInset = 14, kRightInset = 8, kUnknownLine = 13;  // pixels at 96 dpi

int LineHeight(HWND edit, uint32_t dpi) {
  const HFONT font = FontOf(edit);
  if (font == nullptr) return ScaleFor(dpi, kUnknownLine);
  const WindowDc dc(edit);
  const SelectScope selected(dc.Get(), font);
  TEXTMETRICW metrics = {};
  GetTextMetricsW(dc.Get(), &metrics);
  return metrics.tmHeight;
}

}  // namespace

HWND MakeEdit(HWND parent, int id, DWORD style, size_t longest, HFONT font) {
  const HWND edit = MakeControl(parent, {L"EDIT", style | ES_AUTOHSCROLL | ES_MULTILINE}, id, font);
  if (longest != 0) SendMessageW(edit, EM_SETLIMITTEXT, longest, 0);
  return edit;
}

std::u16string TextOfEdit(HWND edit) {
  std::u16string text = TextOfWindow(edit);
  const auto limit = static_cast<size_t>(SendMessageW(edit, EM_GETLIMITTEXT, 0, 0));
  text.resize(std::min(text.size(), limit));
  return text;
}

void CentreEditLine(HWND edit, int leftInset, int rightInset, uint32_t dpi) {
  if (!IsWindow(edit)) return;
  SendMessageW(edit, EM_SETMARGINS, EC_LEFTMARGIN | EC_RIGHTMARGIN, 0);
  RECT rect = ClientRectOf(edit);
  const int inset = std::max<int>((rect.bottom - LineHeight(edit, dpi)) / 2, 0);
  rect.left += ScaleFor(dpi, leftInset);
  rect.right -= ScaleFor(dpi, rightInset);
  rect.top += inset;
  rect.bottom -= inset;
  SendMessageW(edit, EM_SETRECT, 0, reinterpret_cast<LPARAM>(&rect));
  SendMessageW(edit, EM_SCROLLCARET, 0, 0);
}

void CentreField(HWND edit, uint32_t dpi) { CentreEditLine(edit, kLeftInset, kRightInset, dpi); }

}  // namespace quilmark
