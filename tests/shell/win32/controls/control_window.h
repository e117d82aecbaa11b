// A window of a test that hands its messages to native controls, and writes down what they tell.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "config/palette.h"
#include "shell/view/silent_window.h"
#include "shell/win32/controls/native_controls.h"

namespace quilmark {

class ControlWindow : public ControlHost {
 public:
  explicit ControlWindow(uint32_t dpi = 96);
  ~ControlWindow() override;
  ControlWindow(const ControlWindow&) = delete;
  ControlWindow& operator=(const ControlWindow&) = delete;

  ViewContext Context() const override;
  const GdiFonts& Fonts() const override { return fonts_; }
  bool IsDark() const override { return true; }
  bool OnControl(const ControlEvent& event) override;
  void PaintControl(Canvas& canvas, const ControlPicture& control) const override;

  HWND Handle() const { return window_; }
  void Make(std::span<const ControlSpec> specs) { controls.Make(window_, specs, *this); }
  void TakeScale(uint32_t dpi);  // and its fonts
  std::vector<ControlEvent> TakeEvents();
  std::vector<ControlPicture> TakePictures();

  NativeControls controls;
  std::function<bool(const ControlEvent&)> answer;  // to an event, once it is written down

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  uint32_t dpi_;
  Palette palette_ = ThemeDefaults(true);
  GdiFonts fonts_;
  HWND window_ = nullptr;
  std::vector<ControlEvent> events_;
  mutable SilentWindow asked_;
  mutable std::vector<ControlPicture> pictures_;
};

void DispatchAll();                                 // what waits for this thread
void Press(HWND control, WPARAM key);               // down and up
void Type(HWND control, std::u16string_view text);  // as characters
std::u16string TextOf(HWND control);
std::u16string ClassOf(HWND control);
bool IsVisibleStyle(HWND control);

// Holds Shift for its own lifetime.
class HeldShift {
 public:
  HeldShift() { Set(0x80); }
  ~HeldShift() { Set(0); }
  HeldShift(const HeldShift&) = delete;
  HeldShift& operator=(const HeldShift&) = delete;

 private:
  static void Set(BYTE state);
};

}  // namespace quilmark
