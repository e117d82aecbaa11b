// The one record of the interface: made before anything else, living until the process ends.
//
// Belongs to the interface thread, but for what is atomic. What is kept between runs stands in
// CurrentWindowSettings, and the state of the search in search_state.h and filtered_results.h.
#pragma once

#include <atomic>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "config/hotkeys.h"
#include "platform/window_post.h"
#include "shell/search/list_layout.h"
#include "shell/search/selection.h"

namespace quilmark {

enum class AppMode : int32_t { kSearch = 0, kAnalysis = 1, kDuplicates = 2 };

// What the window asks of parts of the program that need not be there; an empty one does nothing.
struct WindowFeatures {
  std::function<void()> requestAttributes;  // of the rows in view
  std::function<bool()> showsStale;         // one of them shows what its file has had
  std::function<void()> requestThumbnails;  // of the rows in view
  std::function<void()> refreshFilter;      // applies the filters to new results, on a job
  std::function<void()> refreshFilterCounts;
  std::function<void()> prewarmAttributes;   // raises Engine().prewarming until it is done
  std::function<void()> autosaveAttributes;  // on a job, if there is something to save
  std::function<void()> saveAttributes;      // at the end, before it returns
  std::function<void()> refreshRecentView;
  std::function<void(int column)> sort;    // flips the direction of the column that is sorted by
  std::function<void(int column)> resort;  // keeps the direction
  std::function<void()> openFocused;       // the row that has the focus
};

inline void RunFeature(const std::function<void()>& feature) {
  if (feature) feature();
}

// The list under the mouse.
struct ListState {
  Selection selection;
  int64_t hoverRow = -1;
  int hoverColumn = -1;
  int hoverTag = -1;
  Bar hoverBar = Bar::kNone, dragBar = Bar::kNone;
  uint64_t lastClickMs = 0;
  int64_t lastClickRow = -1;  // on a name; -1: none to follow
  int dragColumn = -1;        // whose edge is held
  int dragColumnX = 0, dragColumnWidth = 0;
  int wheelRest = 0, tiltRest = 0, sidebarRest = 0;  // of a wheel's turns, see TakeTurn
  bool dragsSidebar = false;                         // the thumb of its bar is held
  Point panPoint;                                    // of the finger that moves the rows
};

struct AppState {
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
  std::u16string language;  // code of the interface's language

  // View.
  AppMode appMode = AppMode::kSearch;
  int32_t clientWidth = 0, clientHeight = 0;  // never negative
  bool frameHeld = false;                     // its size may change with each move of the mouse
  int32_t sidebarWidth = 200, headerTop = 90;

  // List.
  int64_t scrollY = 0;
  int32_t scrollX = 0;
  std::atomic<uint64_t> lastScrollTick = 0;  // milliseconds
  bool thumbDragging = false;
  ListState list;
  int32_t pathColumnWidth = 0;  // as fitted to the rows in view; the stored width is its least
  int32_t sidebarScroll = 0;    // first filter tag in view
  std::vector<std::u16string> tagCaptions;  // of the filter categories, see TagCaptions
  std::u16string statusText;
  uint64_t shownGeneration = 0;              // of the latest results that were final
  std::u16string answeredText;               // of the search box, when they came
  std::atomic<bool> keepScrollOnce = false;  // the next final results go back to savedScrollY
  int64_t savedScrollY = 0;
  std::vector<char16_t> scopeDrives;  // letters of the entries of the scope box, behind the first two

  // Timers.
  std::atomic<bool> repaintPending = false;
  std::optional<Rect> repaintOnly;  // of the list; empty: all of it
  uint64_t listPaintedMs = 0;       // when all of it was
  bool paintedMissing = false;      // with rows of which something was not known yet
  uint64_t repaintAskedMs = 0;      // when the oldest request was made that no repaint has followed
  bool filterCountsPending = false;
  bool prewarmRunning = false;  // sorting waits
  int prewarmRounds = 0;
  std::optional<uint64_t> taskbarSeenMs;  // when a new shell was last taken note of
  bool taskbarWaits = false;              // kTimerTaskbar comes for another
  bool syncRetryArmed = false;            // kTimerHiddenStart comes to look for drives again

  WindowFeatures features;
};

AppState& App();

}  // namespace quilmark
