#include "shell/settings/hotkey_capture.h"

#include "config/translate.h"
#include "shell/settings/hotkey_registration.h"
#include "shell/view/window_ids.h"

namespace quilmark {

namespace {

constexpr uint32_t kHintDelayMs = 200;
// Virtual key codes.
constexpr uint32_t kKeyShift = 16, kKeyAlt = 18, kKeyEscape = 27, kKeyLeftWin = 91, kKeyRightWin = 92,
                   kKeyOfInputMethod = 229, kKeyOfPacket = 231;

struct Text {
  std::u16string_view key, english;
};

std::u16string Translated(const Text& text) { return TranslateOr(text.key, text.english); }

// Why a combination is not taken: for a message box, and for the box of the page.
struct Refusal {
  Text text, shortText;
  bool isError = true;
};
constexpr Refusal kNeedModifier = {
    {u"Msg_HotkeyNeedModifier", u"Hotkey must include Ctrl, Alt, or Shift."},
    {u"Settings_HotkeyNeedModifierShort", u"Need Ctrl/Alt/Shift"},
    false};
constexpr Refusal kConflict = {
    {u"Msg_HotkeyConflict", u"This combination is already used by another hotkey."},
    {u"Settings_HotkeyConflictShort", u"Conflict, retry"}};
constexpr Refusal kFailed = {
    {u"Msg_HotkeyRegisterFailed", u"Failed to register hotkey. Try another combination."},
    {u"Settings_HotkeyFailedShort", u"Failed, retry"}};

std::u16string InformationTitle() { return TranslateOr(u"MsgTitle_Information", u"Information"); }

std::u16string HintFor(HotkeyKind which) {
  if (which == HotkeyKind::kShow) {
    return TranslateOr(u"Status_HotkeyCaptureHint",
                       u"Press a new hotkey combination (include Ctrl / Alt / Shift, Esc to cancel)");
  }
  return TranslateOr(u"Status_HotkeyCaptureHintFgExe",
                     u"Press a hotkey for \"open foreground app in Explorer\" (Ctrl / Alt / Shift "
                     u"required, Esc to cancel)");
}

void BeginInMainWindow(const CaptureParts& parts) {
  parts.window.StopTimer(kTimerHiddenStart);
  parts.window.ShowAndRaise();
  parts.port.FlashTitle();
  parts.window.AddOrUpdateTrayIcon();
  parts.capture.savedTitle = parts.port.Title();
  parts.window.SetTitle(HintFor(parts.capture.which));
  parts.port.FocusMainWindow();
  parts.window.StartTimer(kTimerCaptureHint, kHintDelayMs);
}

void BeginInPage(const CaptureParts& parts) {
  const HotkeyKind which = parts.capture.which;
  parts.port.SetPageText(which, TranslateOr(u"Settings_HotkeyWaiting", u"Waiting..."));
  parts.port.FocusPageBox(which);
}

// Alone no key of a combination: modifiers, and keys that stand for what an input method or a program
// has typed.
bool IsNoKey(uint32_t key) {
  return key == kKeyOfInputMethod || key == kKeyOfPacket || (key >= kKeyShift && key <= kKeyAlt) ||
         key == kKeyLeftWin || key == kKeyRightWin;
}

// The capture stays on for another try.
void Refuse(const CaptureParts& parts, const Refusal& refusal) {
  if (parts.capture.window == CaptureWindow::kSettingsPage) {
    return parts.port.SetPageText(parts.capture.which, Translated(refusal.shortText));
  }
  if (refusal.isError) return parts.window.TellError(Translated(refusal.text));
  parts.port.TellInformation(InformationTitle(), Translated(refusal.text));
}

void TellSuccess(const CaptureParts& parts, HotkeyKind which, Hotkey hotkey) {
  const std::u16string prefix =
      which == HotkeyKind::kShow
          ? TranslateOr(u"Msg_HotkeySetPrefix", u"Hotkey set to: ")
          : TranslateOr(u"Msg_HotkeySetPrefixFgExe", u"Foreground app location hotkey set to: ");
  parts.port.TellInformation(TranslateOr(u"MsgTitle_Completed", u"Completed"),
                             prefix + parts.port.HotkeyText(hotkey));
}

void TakeCombination(const CaptureParts& parts, Hotkey wanted) {
  const HotkeyKind which = parts.capture.which;
  const HotkeyKind other = which == HotkeyKind::kShow ? HotkeyKind::kForeground : HotkeyKind::kShow;
  if (wanted.modifiers == 0) return Refuse(parts, kNeedModifier);
  if (wanted == HotkeyOf(parts.hotkeys, other)) return Refuse(parts, kConflict);
  // What it is already counts as a failure, and stays registered.
  const bool isNew = wanted != HotkeyOf(parts.hotkeys, which);
  if (!isNew || !RegisterHotkeyOf(parts.hotkeys, parts.port, which, wanted, SaveHotkey::kYes)) {
    return Refuse(parts, kFailed);
  }
  const CaptureWindow window = parts.capture.window;
  EndHotkeyCapture(parts);
  if (window == CaptureWindow::kMain) TellSuccess(parts, which, wanted);
}

}  // namespace

void BeginHotkeyCapture(const CaptureParts& parts, HotkeyKind which, CaptureWindow window) {
  EndHotkeyCapture(parts);
  parts.capture.isActive = true;
  parts.capture.which = parts.capture.hintPending = which;
  parts.capture.window = window;
  window == CaptureWindow::kMain ? BeginInMainWindow(parts) : BeginInPage(parts);
}

void EndHotkeyCapture(const CaptureParts& parts) {
  HotkeyCapture& capture = parts.capture;
  if (!capture.isActive) return;
  capture.isActive = false;
  if (capture.window == CaptureWindow::kMain) return parts.window.SetTitle(capture.savedTitle);
  parts.port.SetPageText(capture.which, parts.port.HotkeyText(HotkeyOf(parts.hotkeys, capture.which)));
}

void ShowCaptureHint(const CaptureParts& parts) {
  if (!parts.capture.isActive) return;
  parts.port.ShowBalloon(InformationTitle(), HintFor(parts.capture.hintPending));
}

bool TakeCaptureKey(const CaptureParts& parts, const CaptureKey& key) {
  if (!parts.capture.isActive) return false;
  if (key.isRepeat) return true;
  if (key.from == CaptureWindow::kSettingsPage && key.isAway) {
    EndHotkeyCapture(parts);
    return false;
  }
  if (key.key == kKeyEscape) {
    EndHotkeyCapture(parts);
  } else if (!IsNoKey(key.key)) {
    TakeCombination(parts, {key.modifiers, key.key});
  }
  return true;
}

}  // namespace quilmark
