// Numbers of the main window: messages, timers, hotkeys, child controls. Some are known to other
// programs and to older copies; none may change.
#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>

#include "index/life/volume_life.h"
#include "search/attributes/attr_jobs.h"
#include "search/filter/filters.h"
#include "search/results/search_session.h"

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

// Whose a number is. The first three are the modes of the window, by their values. A number of
// kEveryView reaches the hidden views too; what they want done is dropped.
enum class Owner : uint8_t { kSearch, kAnalysis, kDuplicates, kEveryView, kApp };

// Whether an owner hears of a number also while another view is shown.
enum class When : uint8_t { kInEveryMode, kInItsMode };

// Whether a timer is stopped when it has fired.
enum class Firing : uint8_t { kOnce, kRepeating };

// A message or a timer, and who hears of it.
struct NumberRow {
  uint32_t number = 0;
  Owner owner = Owner::kApp;
  When when = When::kInEveryMode;
  Firing firing = Firing::kOnce;  // of a timer
};

inline constexpr NumberRow kMessageNumbers[] = {
    {WM_INDEX_STATE, Owner::kApp},        {WM_SEARCH_RESULTS, Owner::kSearch},
    {WM_SEARCH_STATUS, Owner::kSearch},   {WM_FILTER_RESULTS, Owner::kSearch},
    {WM_RECENT_LOADED, Owner::kSearch},   {WM_ATTRS_UPDATED, Owner::kSearch},
    {WM_NON_NTFS_REFRESHED, Owner::kApp}, {WM_VOLUME_LOST, Owner::kApp},
    {WM_VOLUMES_SYNCED, Owner::kApp},     {WM_RESORT_RESULTS, Owner::kSearch},
};

inline constexpr NumberRow kTimerNumbers[] = {
    {ID_TIMER_TRAY_RETRY, Owner::kApp, When::kInEveryMode, Firing::kRepeating},
    {TIMER_SEARCH_DEBOUNCE, Owner::kSearch},
    {kTimerScrollSettle, Owner::kSearch},
    {kTimerHiddenStart, Owner::kApp},
    {kTimerPrewarm, Owner::kSearch},
    {kTimerPrewarmPoll, Owner::kSearch, When::kInEveryMode, Firing::kRepeating},
    {kTimerFilterCounts, Owner::kSearch},
    {kTimerCacheAutosave, Owner::kApp, When::kInEveryMode, Firing::kRepeating},
    {kTimerIdleTrim, Owner::kApp},
    {kTimerWorkTrim, Owner::kApp},
    {kTimerCaptureHint, Owner::kApp},
    {kTimerRepaint, Owner::kEveryView},
    {kTimerTaskbar, Owner::kApp},
};

// The row of a number; null for one that has no owner.
constexpr const NumberRow* RowOfNumber(std::span<const NumberRow> table, uint32_t number) {
  for (const NumberRow& row : table) {
    if (row.number == number) return &row;
  }
  return nullptr;
}

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
inline constexpr int kTrayHomePage = 20004;
inline constexpr int kTrayAutostart = 20005;
inline constexpr int kTraySettings = 20025;

// Commands that its handler takes beside them.
inline constexpr int kTrayClearRecent = 20006;
inline constexpr int kTrayCaptureShow = 20007;
inline constexpr int kTraySidebar = 20008;
inline constexpr int kTrayTopBar = 20009;
inline constexpr int kTrayInitials = 20012;
inline constexpr int kTrayLanguageFile = 20020;
inline constexpr int kTrayGlobalTrim = 20021;
inline constexpr int kTrayGridLines = 20022;
inline constexpr int kTrayCaptureForeground = 20023;
inline constexpr int kTrayTheme = 20024;
inline constexpr int kTrayFirstLanguage = 20100;      // and up: a language by its index
inline constexpr int kTrayFirstContentLimit = 20200;  // and up to 20205: a limit for content searches

// False if two of the numbers are one: two things would get each other's messages.
constexpr bool AreAllDifferent(std::initializer_list<uint32_t> numbers) {
  for (const uint32_t* one = numbers.begin(); one != numbers.end(); ++one) {
    for (const uint32_t* other = one + 1; other != numbers.end(); ++other) {
      if (*one == *other) return false;
    }
  }
  return true;
}
static_assert(AreAllDifferent({WM_INDEX_STATE, WM_SEARCH_RESULTS, WM_SEARCH_STATUS, WM_FILTER_RESULTS,
                               WM_RECENT_LOADED, WM_ATTRS_UPDATED, WM_NON_NTFS_REFRESHED, WM_VOLUME_LOST,
                               WM_VOLUMES_SYNCED, WM_RESORT_RESULTS, kTrayCallback}));
static_assert(AreAllDifferent({ID_TIMER_TRAY_RETRY, TIMER_SEARCH_DEBOUNCE, kTimerScrollSettle,
                               kTimerHiddenStart, kTimerPrewarm, kTimerPrewarmPoll, kTimerFilterCounts,
                               kTimerCacheAutosave, kTimerIdleTrim, kTimerWorkTrim, kTimerCaptureHint,
                               kTimerRepaint, kTimerTaskbar, uint32_t{kHotkeyShow},
                               uint32_t{kHotkeyForeground}}));
static_assert(AreAllDifferent({kQueryBox,
                               kStatusText,
                               kScopeBox,
                               kVerticalBar,
                               kSizePreset,
                               kTimePreset,
                               kSizeBox,
                               kSecondSizeBox,
                               kSizeUnit,
                               kDateFrom,
                               kDateTo,
                               kHorizontalBar,
                               kSidebarBar,
                               kFirstTag,
                               kTrayShow,
                               kTrayExit,
                               kTrayHomePage,
                               kTrayAutostart,
                               kTraySettings,
                               kTrayClearRecent,
                               kTrayCaptureShow,
                               kTraySidebar,
                               kTrayTopBar,
                               kTrayInitials,
                               kTrayLanguageFile,
                               kTrayGlobalTrim,
                               kTrayGridLines,
                               kTrayCaptureForeground,
                               kTrayTheme,
                               kTrayFirstLanguage,
                               kTrayFirstContentLimit}));

inline constexpr uint16_t kAppIcon = 104;  // resource

}  // namespace quilmark
