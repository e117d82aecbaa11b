// What the start and the end of the process ask of the system. The real one calls Windows; tests play
// it.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "canvas/rect.h"

namespace quilmark {

// Kinds of a message box without an owner.
enum class BoxIcon { kInformation, kError };

struct ProcessPort {
  virtual ~ProcessPort() = default;

  // Scale: true if the system took this awareness context (a DPI_AWARENESS_CONTEXT as its number).
  virtual bool HasScaleAwareness() = 0;
  virtual bool SetScaleAwareness(int context) = 0;
  virtual uint32_t SystemDpi() = 0;  // 96 where the system does not say

  virtual void Pause(uint32_t ms) = 0;
  virtual uint16_t UiLanguage() = 0;  // a LANGID

  // Empty if the command line cannot be split; its text then decides.
  virtual std::optional<std::vector<std::u16string>> Arguments() = 0;
  virtual std::u16string CommandLineText() = 0;

  // The named mutex of the one running copy: true if this process made it. It is closed by CloseMutex.
  virtual bool TakeMutex(std::u16string_view name) = 0;
  virtual void CloseMutex() = 0;

  virtual void EnablePrivilege(std::u16string_view name) = 0;  // one that cannot be had is passed over
  virtual bool ShellIsUp() = 0;                                // its window and its task bar exist
  virtual bool IsAdministrator() = 0;
  virtual void ShowBox(BoxIcon icon, const std::u16string& title, const std::u16string& text) = 0;

  // The running copy's window: found and brought to the front. A window with more rights than this copy
  // does not let itself be raised: its owner is given the foreground and asked to come by itself.
  virtual bool FindRunningWindow() = 0;
  virtual void LetRunningTakeForeground() = 0;
  virtual void RaiseRunningWindow() = 0;
  virtual void AskRunningToShow() = 0;
  virtual std::u16string HotkeyText(uint32_t modifiers, uint32_t key) = 0;

  virtual void RegisterWindowClass() = 0;
  virtual std::optional<Rect> WorkArea() = 0;
  virtual Rect PrimaryScreen() = 0;
  virtual bool CreateMainWindow(Point place, int width, int height, const std::u16string& title) = 0;
  virtual void ShowCreatedWindow(bool hidden) = 0;
  virtual void RunMessageLoop() = 0;
};

}  // namespace quilmark
