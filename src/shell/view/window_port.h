// What the decisions of the interface ask of the main window. The window of the system implements it;
// tests write down what was asked.
#pragma once

#include <cstdint>
#include <string>

#include "canvas/rect.h"
#include "shell/app/tray_presence.h"

namespace quilmark {

// All calls on the interface thread.
struct WindowPort {
  virtual ~WindowPort() = default;

  // Timers: arming an armed one replaces its delay.
  virtual void StartTimer(uint32_t id, uint32_t delayMs) = 0;
  virtual void StopTimer(uint32_t id) = 0;

  virtual void SetTitle(const std::u16string& title) = 0;
  virtual void SetStatus(const std::u16string& text) = 0;

  virtual std::u16string SearchBoxText() = 0;
  virtual void ClearSearchBox() = 0;  // without starting a search
  virtual bool IsSearchBoxEnabled() = 0;
  virtual void EnableSearchBox() = 0;
  virtual void FocusSearchBox() = 0;
  virtual void RebuildScopeBox() = 0;

  virtual void CancelRename() = 0;
  virtual void MoveRename() = 0;      // after its row, which is somewhere else now
  virtual void RedrawTags() = 0;      // of the filter categories
  virtual void InvalidateList() = 0;  // from headerTop down
  virtual void Invalidate(const Rect& place) = 0;
  // Path column and scrollbars from the rows and the scroll offset; what is under the mouse from both.
  virtual void RelayoutList() = 0;

  virtual bool IsVisible() = 0;
  virtual void Hide() = 0;
  virtual void ShowAndRaise() = 0;  // restored, on a screen, in front, focus in the search box
  virtual void Destroy() = 0;
  // Sets trayIconAdded; on failure the retry timer.
  virtual TrayIconState AddOrUpdateTrayIcon() = 0;
  virtual bool SystemShutsDown() = 0;

  virtual void TrimSelf() = 0;         // subject to the rule of MayTrim
  virtual void TrimSelfInJob() = 0;    // the same on a background job
  virtual void TrimOthersInJob() = 0;  // if the user wants it
};

}  // namespace quilmark
