// Numbers of the main window: messages, timers, hotkeys, child controls. Some are known to other
// programs and to older copies; none may change.
#pragma once

#include <cstdint>

#include "index/volume_life.h"
#include "search/attr_jobs.h"
#include "search/filters.h"
#include "search/search_state.h"

namespace quilmark {

// Posted by background work, beside those that the index and the search declare.
inline constexpr uint32_t WM_RECENT_LOADED = 1029;
inline constexpr uint32_t kTrayCallback = 32769;  // second: a mouse message

// Timers of the main window.
inline constexpr uint32_t ID_TIMER_TRAY_RETRY = 30002;
inline constexpr uint32_t kTimerScrollSettle = 30004;
inline constexpr uint32_t kTimerHiddenStart = 30005;
inline constexpr uint32_t kTimerPrewarm = 30006;
inline constexpr uint32_t kTimerPrewarmPoll = 30007;
inline constexpr uint32_t kTimerFilterCounts = 30008;
inline constexpr uint32_t kTimerCacheAutosave = 30009;
inline constexpr uint32_t kTimerIdleTrim = 30010;
inline constexpr uint32_t kTimerWorkTrim = 30011;
inline constexpr uint32_t kTimerCaptureHint = 30013;
inline constexpr uint32_t kTimerRepaint = 30014;
inline constexpr uint32_t kTimerTaskbar = 30015;

// Hotkeys.
inline constexpr int kHotkeyShow = 30001;        // shows or hides the window
inline constexpr int kHotkeyForeground = 30012;  // shows the foreground program's file

// Child controls.
inline constexpr int kQueryBox = 101;  // what is searched for
inline constexpr int kStatusText = 103;
inline constexpr int kScopeBox = 104;
inline constexpr int kVerticalBar = 105;
inline constexpr int kSizePreset = 106;
inline constexpr int kTimePreset = 107;
inline constexpr int kSizeBox = 108;
inline constexpr int kSecondSizeBox = 109;  // stays hidden
inline constexpr int kSizeUnit = 110;
inline constexpr int kDateFrom = 111;
inline constexpr int kDateTo = 112;
inline constexpr int kHorizontalBar = 113;
inline constexpr int kSidebarBar = 117;
inline constexpr int kFirstTag = 200;  // and up: a button a filter category

// Commands of the tray menu.
inline constexpr int kTrayShow = 20001;
inline constexpr int kTrayExit = 20002;

inline constexpr uint16_t kAppIcon = 104;  // resource

}  // namespace quilmark
