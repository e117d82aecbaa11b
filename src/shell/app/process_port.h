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

// All calls on the main thread, in the order that RunProcess prescribes.
struct ProcessPort {
  virtual ~ProcessPort() = default;

  // True where the system knows of kinds of scale awareness.
  virtual bool HasScaleAwareness() = 0;

  // Asks for a kind (a DPI_AWARENESS_CONTEXT as its number). False where the system refuses it. REQUIRES
  // HasScaleAwareness.
  [[nodiscard]] virtual bool SetScaleAwareness(int context) = 0;

  // The dpi of the primary screen; 96 where the system does not say.
  virtual uint32_t SystemDpi() = 0;

  // Waits.
  virtual void Pause(uint32_t ms) = 0;

  // The language of the system's interface, as a LANGID.
  virtual uint16_t UiLanguage() = 0;

  // The arguments, the program's own name first. Empty if the command line cannot be split.
  virtual std::optional<std::vector<std::u16string>> Arguments() = 0;

  // The command line as one text.
  virtual std::u16string CommandLineText() = 0;

  // Makes the named mutex of the one running copy. False where it is there already, or cannot be made.
  [[nodiscard]] virtual bool TakeMutex(std::u16string_view name) = 0;

  // Closes the mutex, if this process has made it.
  virtual void CloseMutex() = 0;

  // Enables a privilege of the process; one that cannot be had is passed over.
  virtual void EnablePrivilege(std::u16string_view name) = 0;

  // True once the window of the shell and its taskbar exist.
  virtual bool ShellIsUp() = 0;

  // True if the process has the rights of an administrator.
  virtual bool IsAdministrator() = 0;

  // Shows a message box without an owner, and returns when it is closed.
  virtual void ShowBox(BoxIcon icon, const std::u16string& title, const std::u16string& text) = 0;

  // Looks for the window of the running copy, which the next three calls are about. False where there is
  // none.
  [[nodiscard]] virtual bool FindRunningWindow() = 0;

  // Lets the running copy come to the foreground by itself, as AskRunningToShow asks it to.
  virtual void LetRunningTakeForeground() = 0;

  // Brings its window to the front, which a window with more rights than this copy does not let happen.
  virtual void RaiseRunningWindow() = 0;

  // Asks the running copy to show its window.
  virtual void AskRunningToShow() = 0;

  // The text of a hotkey, as HotkeyDisplayText gives it for the present keyboard.
  virtual std::u16string HotkeyText(uint32_t modifiers, uint32_t key) = 0;

  // Makes the class of the main window known.
  virtual void RegisterWindowClass() = 0;

  // The primary screen without the taskbar. Empty where the system does not say.
  virtual std::optional<Rect> WorkArea() = 0;

  // The primary screen.
  virtual Rect PrimaryScreen() = 0;

  // Makes the main window, of that outer size, without showing it. False where it cannot be made.
  [[nodiscard]] virtual bool CreateMainWindow(Point place, int width, int height,
                                              const std::u16string& title) = 0;

  // Shows it as the start of the process asks for, or leaves it hidden.
  virtual void ShowCreatedWindow(bool hidden) = 0;

  // Hands out messages until the loop is told to end.
  virtual void RunMessageLoop() = 0;
};

}  // namespace quilmark
