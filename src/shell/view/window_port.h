// What the decisions of the interface ask of the main window. The window of the system implements it;
// tests write down what was asked.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "canvas/rect.h"
#include "config/window_settings.h"
#include "shell/view/effects.h"

namespace quilmark {

enum class TrayIconState {
  kAbsent,  // the shell took nothing
  kPut,     // it is there, and was not
  kStood,   // it was there, whatever was believed of it
};

// All calls on the interface thread. Those of the first part never bring an event to a view before they
// return.
struct WindowPort {
  virtual ~WindowPort() = default;

  // Timers: arming an armed one replaces its delay.
  virtual void StartTimer(uint32_t id, uint32_t delayMs) = 0;
  virtual void StopTimer(uint32_t id) = 0;

  virtual void SetTitle(const std::u16string& title) = 0;
  virtual void SetStatus(const std::u16string& text) = 0;

  // Of a control, which does not report what it is told here.
  virtual void SetText(int id, const std::u16string& text) = 0;
  virtual std::u16string TextOf(int id) = 0;
  virtual void SetItems(int id, const std::vector<std::u16string>& items, int chosen) = 0;
  virtual void EnableControl(int id) = 0;
  virtual void RedrawTags() = 0;

  virtual std::optional<WindowPlacement> Placement() = 0;  // empty where the system does not say
  virtual bool IsVisible() = 0;
  virtual bool SystemShutsDown() = 0;
  virtual void TrimSelf() = 0;       // subject to the rule of MayTrim
  virtual void TrimSelfInJob() = 0;  // the same on a background job
  virtual void TrimOthersInJob() = 0;

  // For whoever answers a message of the system itself, and reads all state anew afterwards.
  virtual void CarryOut(const Effects& effects) = 0;
  virtual void TellError(const std::u16string& text) = 0;  // comes back when the user has seen it
  virtual void Hide() = 0;
  virtual void ShowAndRaise() = 0;  // restored, on a screen, in front, focus in the search box
  virtual void Destroy() = 0;
  virtual void PostClose() = 0;  // a close request, by the queue
  // Sets trayIconAdded; on failure the retry timer.
  virtual TrayIconState AddOrUpdateTrayIcon() = 0;
};

}  // namespace quilmark
