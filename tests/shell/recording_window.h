// A main window that writes down what is asked of it.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "shell/app/app_state.h"
#include "shell/app/window_end.h"
#include "shell/view/window_port.h"

namespace quilmark {

class RecordingWindow : public WindowPort, public WindowEndPort {
 public:
  explicit RecordingWindow(AppState& app) : app_(app) {}

  void StartTimer(uint32_t id, uint32_t delayMs) override { timers[id] = delayMs; }
  void StopTimer(uint32_t id) override {
    timers.erase(id);
    calls.push_back("StopTimer " + std::to_string(id));
  }
  void SetTitle(const std::u16string& text) override { title = text; }
  void SetStatus(const std::u16string& text) override { status = text; }
  std::u16string SearchBoxText() override { return searchBox; }
  void ClearSearchBox() override { searchBox.clear(); }
  bool IsSearchBoxEnabled() override { return isEnabled; }
  void EnableSearchBox() override { isEnabled = true; }
  void FocusSearchBox() override { calls.push_back("FocusSearchBox"); }
  void RebuildScopeBox() override { calls.push_back("RebuildScopeBox"); }
  void CancelRename() override { calls.push_back("CancelRename"); }
  void MoveRename() override { calls.push_back("MoveRename"); }
  void RedrawTags() override { calls.push_back("RedrawTags"); }
  void InvalidateList() override { calls.push_back("InvalidateList"); }
  void Invalidate(const Rect& place) override {
    calls.push_back("Invalidate");
    invalidated = Union(invalidated, place);
  }
  void RelayoutList() override { calls.push_back("RelayoutList"); }
  bool IsVisible() override { return isVisible; }
  void Hide() override {
    isVisible = false;
    calls.push_back("Hide");
  }
  void ShowAndRaise() override {
    isVisible = true;
    calls.push_back("ShowAndRaise");
  }
  void Destroy() override { calls.push_back("Destroy"); }
  TrayIconState AddOrUpdateTrayIcon() override {
    app_.trayIconAdded = trayWorks;
    calls.push_back("AddOrUpdateTrayIcon");
    if (!trayWorks) return TrayIconState::kAbsent;
    return std::exchange(trayStands, true) ? TrayIconState::kStood : TrayIconState::kPut;
  }
  bool SystemShutsDown() override { return systemShutsDown; }
  void TrimSelf() override { calls.push_back("TrimSelf"); }
  void TrimSelfInJob() override { calls.push_back("TrimSelfInJob"); }
  void TrimOthersInJob() override { calls.push_back("TrimOthersInJob"); }

  std::optional<WindowPlacement> Placement() override {
    calls.push_back("Placement");
    return WindowPlacement{.restored = size};
  }
  void CloseOtherWindows() override { calls.push_back("CloseOtherWindows"); }
  void RemoveTrayIcon() override { calls.push_back("RemoveTrayIcon"); }
  void UnregisterHotkeys() override { calls.push_back("UnregisterHotkeys"); }
  void ReleaseBrushes() override { calls.push_back("ReleaseBrushes"); }
  void ReleaseIcons() override { calls.push_back("ReleaseIcons"); }
  void ReleaseBackBuffer() override { calls.push_back("ReleaseBackBuffer"); }
  void ReleaseFonts() override { calls.push_back("ReleaseFonts"); }
  void QuitMessageLoop() override { calls.push_back("QuitMessageLoop"); }

  // Times the call was made.
  size_t Count(const std::string& call) const {
    size_t count = 0;
    for (const std::string& made : calls) count += made == call ? 1 : 0;
    return count;
  }

  std::vector<std::string> calls;       // but for timers armed and texts set
  Rect invalidated;                     // all of them together
  std::map<uint32_t, uint32_t> timers;  // armed: id, delay in milliseconds
  std::u16string title = u"before", status = u"before", searchBox;
  WindowSize size = {900, 600};
  bool isEnabled = false, isVisible = true, trayWorks = true, trayStands = false,
       systemShutsDown = false;

 private:
  AppState& app_;
};

}  // namespace quilmark
