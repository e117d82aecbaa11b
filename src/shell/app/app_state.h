// The one record of the interface: made before anything else, living until the process ends.
//
// Belongs to the interface thread, but for what is atomic. What is kept between runs stands in
// CurrentWindowSettings, and the state of the search in search_session.h.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>

#include "config/hotkeys.h"
#include "platform/window_post.h"
#include "shell/search/search_view.h"
#include "shell/settings/ext_picker.h"
#include "shell/settings/hotkey_capture.h"
#include "shell/view/window_ids.h"

namespace quilmark {

// Which view the window shows. The values are places in AppState::views.
enum class AppMode : int32_t { kSearch = 0, kAnalysis = 1, kDuplicates = 2 };
inline constexpr size_t kAppModes = 3;

struct SystemPort;
struct ThemePort;

// All state of the window's side of the program that is not kept between runs.
struct AppState {
  // Both ports outlive the state.
  AppState(EnginePort& engine, ShellPort& shell) : search(engine, shell) {}
  AppState(const AppState&) = delete;
  AppState& operator=(const AppState&) = delete;

  // Process and lifetime.
  PostTarget mainWindow = nullptr;  // null before its creation and from its destruction on
  bool hiddenStart = false;
  bool uiIsChinese = false;
  uint32_t systemDpi = 96;
  int32_t windowWidth = 1100, windowHeight = 700;  // at the start, in pixels
  bool shownByUser = false;                        // the user has asked for the window in this run
  std::atomic<bool> firstSearchDeferred =
      false;  // a hidden start left the first search to the first show
  bool trayIconAdded = false;
  bool exitRequested = false;    // the next close ends the program
  bool closeBoxPressed = false;  // the close button raised the present close request
  HotkeyConfig hotkeys;
  HotkeyCapture capture;         // of a new hotkey
  ExtPicker picker;              // of file types for a content search
  SystemPort* system = nullptr;  // these three are set before the window is made, and outlive it
  ThemePort* theme = nullptr;
  PickerPort* pickerWindow = nullptr;
  std::u16string language;  // code of the interface's language

  // Views.
  AppMode appMode = AppMode::kSearch;
  int32_t clientWidth = 0, clientHeight = 0;  // never negative
  bool frameHeld = false;                     // its size may change with each move of the mouse
  SearchView search;
  std::array<View*, kAppModes> views = {&search};  // by mode; null: not part of the program
  std::span<const NumberRow> messageNumbers = kMessageNumbers, timerNumbers = kTimerNumbers;
  std::map<int, AppMode> controlOwners;  // by number, of the controls that were made

  // Timers.
  std::optional<uint64_t> taskbarSeenMs;  // when a new shell was last taken note of
  bool taskbarWaits = false;              // kTimerTaskbar comes for another
  bool syncRetryArmed = false;            // kTimerHiddenStart comes to look for drives again
};

// The one state of the program (wiring.cpp). Tests have states of their own.
AppState& App();

// The view that the window shows. Never one that is not part of the program.
inline View& ShownView(AppState& app) { return *app.views[static_cast<size_t>(app.appMode)]; }

// The same, to be read.
inline const View& ShownView(const AppState& app) {
  return *app.views[static_cast<size_t>(app.appMode)];
}

}  // namespace quilmark
