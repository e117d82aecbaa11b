// What the decisions of the interface ask of the main window. The window of the system implements it;
// tests write down what was asked.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "canvas/rect.h"
#include "config/window_settings.h"
#include "shell/view/effects.h"

namespace quilmark {

// Whether the icon stands in the notification area.
enum class TrayIconState {
  kAbsent,  // the shell took nothing
  kPut,     // it is there, and was not
  kStood,   // it was there, whatever was believed of it
};

// All calls on the interface thread. No call down to TrimOthersInJob brings an event to a view before it
// returns; those below it may.
struct WindowPort {
  virtual ~WindowPort() = default;

  // Starts a timer of window_ids.h. One that runs already starts anew with this delay.
  virtual void StartTimer(uint32_t id, uint32_t delayMs) = 0;

  // Stops a timer; one that does not run is passed over.
  virtual void StopTimer(uint32_t id) = 0;

  // The text of the title bar.
  virtual void SetTitle(const std::u16string& title) = 0;

  // The status line of all views: ViewContext::status from now on.
  virtual void SetStatus(const std::u16string& text) = 0;

  // Sets the text of an edit or a tag, which does not report it.
  virtual void SetText(int id, const std::u16string& text) = 0;

  // Puts the caret of an edit behind so many units of its text, with nothing selected.
  virtual void PlaceCaret(int id, size_t units) = 0;

  // The text that a control holds now; empty for a number without a control.
  virtual std::u16string TextOf(int id) = 0;

  // Replaces the items of a combo and chooses one, neither of which it reports.
  virtual void SetItems(int id, const std::vector<std::u16string>& items, int chosen) = 0;

  // Lets a control take input, also in a window that was never laid out.
  virtual void EnableControl(int id) = 0;

  // Has all tags painted again that are controls.
  virtual void RedrawTags() = 0;

  // Where the window stands when it is neither maximised nor minimised. Empty where the system does not
  // say.
  virtual std::optional<WindowPlacement> Placement() = 0;

  // True for a window that is not hidden; it may be minimised or covered.
  virtual bool IsVisible() = 0;

  // True while the system ends the session of the user.
  virtual bool SystemShutsDown() = 0;

  // Gives the memory of the program back to the system, if MayTrim allows it.
  virtual void TrimSelf() = 0;

  // The same on a job.
  virtual void TrimSelfInJob() = 0;

  // Gives back the memory of all other programs, on a job, unless one does so already.
  virtual void TrimOthersInJob() = 0;

  // Carries effects out at once: for code that answers a message of the system itself, and reads all
  // state anew afterwards.
  virtual void CarryOut(const Effects& effects) = 0;

  // Shows a message box, and returns when the user has closed it.
  virtual void TellError(const std::u16string& text) = 0;

  // Takes the window off the screen; its icon in the notification area stays.
  virtual void Hide() = 0;

  // Shows the window restored, on a screen that is there, in front, with the focus in the search box.
  virtual void ShowAndRaise() = 0;

  // Destroys the window, and with it ends the program (EndWindow).
  virtual void Destroy() = 0;

  // Posts a close request, which comes when the present event is done.
  virtual void PostClose() = 0;

  // Puts the icon into the notification area, or renews its tip. Sets trayIconAdded, and starts the
  // retry timer where the shell does not take it.
  virtual TrayIconState AddOrUpdateTrayIcon() = 0;
};

}  // namespace quilmark
