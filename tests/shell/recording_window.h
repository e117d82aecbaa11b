// A main window that writes down what is asked of it, and an engine that does.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "shell/app/app_state.h"
#include "shell/app/window_end.h"
#include "shell/search/engine_port.h"
#include "shell/view/window_port.h"
#include "support/held_job.h"

namespace quilmark {

// Answers as a test has it; does nothing by itself.
struct RecordingEngine : EnginePort {
  void RequestAttributes(std::shared_ptr<const ResultSet>, RowRange range) override {
    requested.push_back(range);
    asked.push_back("attributes");
  }
  void RequestThumbnails(std::shared_ptr<const ResultSet>, RowRange range, int size) override {
    pictured.emplace_back(range, size);
    asked.push_back("thumbnails");
  }
  bool IsLoadingThumbnails() override { return isLoadingThumbnails; }
  bool ShowsStale(const ResultSet&, RowRange) override { return showsStale; }
  void RefreshFilter(FilterSettings settings) override {
    ++filtered;
    if (filters) RefreshFilteredResultsAsync(std::move(settings));
  }
  FilterCounts CountByCategory(const FilterSettings&) override {
    ++recounts;
    return counts;
  }
  void Sort(int column, Direction direction) override {
    sorts.emplace_back(column, direction);
    if (runsSorts) DoSortAsync(column, direction);
  }
  void PrewarmAttributes() override {
    ++prewarms;
    if (prewarmRuns && !prewarming) prewarming.emplace(Engine().prewarming);
  }
  void AutosaveAttributes() override { ++autosaves; }
  void SaveAttributes() override {
    if (save) save();
  }
  void LookForVolumesLater() override { ++looks; }

  std::vector<RowRange> requested;
  std::vector<std::pair<RowRange, int>> pictured;  // with the size
  std::vector<std::string> asked;                  // which of both, in their order
  std::optional<HeldJob> prewarming;
  bool isLoadingThumbnails = false, showsStale = false, filters = false, runsSorts = false,
       prewarmRuns = false;
  int filtered = 0, recounts = 0, prewarms = 0, autosaves = 0, looks = 0;
  FilterCounts counts;
  std::vector<std::pair<int, Direction>> sorts;
  std::function<void()> save;
};

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
  void SetText(int id, const std::u16string& text) override { texts[id] = text; }
  void PlaceCaret(int id, size_t units) override { carets[id] = units; }
  std::u16string TextOf(int id) override { return texts[id]; }
  void SetItems(int id, const std::vector<std::u16string>& all, int chosen) override {
    calls.push_back("SetItems " + std::to_string(id));
    items[id] = {all, chosen};
  }
  void EnableControl(int id) override { calls.push_back("Enable " + std::to_string(id)); }
  void RedrawTags() override { calls.push_back("RedrawTags"); }
  std::optional<WindowPlacement> Placement() override {
    calls.push_back("Placement");
    return WindowPlacement{.restored = size};
  }
  bool IsVisible() override { return isVisible; }
  bool SystemShutsDown() override { return systemShutsDown; }
  void TrimSelf() override { calls.push_back("TrimSelf"); }
  void TrimSelfInJob() override { calls.push_back("TrimSelfInJob"); }
  void TrimOthersInJob() override { calls.push_back("TrimOthersInJob"); }

  // In the order in which the window carries them out.
  void CarryOut(const Effects& effects) override {
    if (effects.relayout) calls.push_back("Relayout");
    if (effects.placesControls) calls.push_back("PlaceControls");
    if (effects.editor == Editor::kOpen) calls.push_back("OpenEditor");
    if (effects.editor == Editor::kMove) calls.push_back("MoveEditor");
    if (effects.editor == Editor::kClose) calls.push_back("CloseEditor");
    if (effects.capture == Capture::kTake) calls.push_back("TakeCapture");
    if (effects.capture == Capture::kRelease) calls.push_back("ReleaseCapture");
    if (effects.focus == Focus::kWindow) calls.push_back("FocusWindow");
    if (effects.focus == Focus::kSearchBox) calls.push_back("FocusSearchBox");
    if (effects.focus == Focus::kEditor) calls.push_back("FocusEditor");
    if (effects.syncsBars) calls.push_back("SyncBars");
    if (effects.rehovers) calls.push_back("Rehover");
    if (effects.menu) calls.push_back("Menu");
    if (effects.command != 0) calls.push_back("Command " + std::to_string(effects.command));
    if (effects.tip) tip = effects.tip;
    if (effects.dirty == ListArea()) calls.push_back("InvalidateList");
    if (!IsEmpty(effects.dirty) && effects.dirty != ListArea()) calls.push_back("Invalidate");
    invalidated = Union(invalidated, effects.dirty);
  }
  void TellError(const std::u16string& text) override {
    calls.push_back("TellError");
    errors.push_back(text);
    if (whileTold) whileTold();
  }
  void Hide() override {
    isVisible = false;
    calls.push_back("Hide");
  }
  void ShowAndRaise() override {
    isVisible = true;
    calls.push_back("ShowAndRaise");
  }
  void Destroy() override { calls.push_back("Destroy"); }
  void PostClose() override { calls.push_back("PostClose"); }
  TrayIconState AddOrUpdateTrayIcon() override {
    app_.trayIconAdded = trayWorks;
    calls.push_back("AddOrUpdateTrayIcon");
    if (!trayWorks) return TrayIconState::kAbsent;
    return std::exchange(trayStands, true) ? TrayIconState::kStood : TrayIconState::kPut;
  }

  void CloseOtherWindows() override { calls.push_back("CloseOtherWindows"); }
  void RemoveTrayIcon() override { calls.push_back("RemoveTrayIcon"); }
  void UnregisterHotkeys() override { calls.push_back("UnregisterHotkeys"); }
  void ReleaseBrushes() override { calls.push_back("ReleaseBrushes"); }
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
  std::u16string title = u"before", status = u"before";
  std::optional<std::u16string> tip;                                 // as it was set last
  std::map<int, std::u16string> texts;                               // of controls
  std::map<int, std::pair<std::vector<std::u16string>, int>> items;  // and the chosen one
  std::map<int, size_t> carets;
  std::vector<std::u16string> errors;
  std::function<void()> whileTold;  // what comes in while the user reads an error
  WindowSize size = {900, 600};
  bool isVisible = true, trayWorks = true, trayStands = false, systemShutsDown = false;

 private:
  Rect ListArea() const { return {0, app_.search.headerTop, app_.clientWidth, app_.clientHeight}; }

  AppState& app_;
};

}  // namespace quilmark
