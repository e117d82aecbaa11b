// Questions that the program of the window tests answers by WM_COPYDATA: dwData is the question, the
// data one 32-bit argument, the result of the message the answer.
#pragma once

#include <cstdint>

namespace quilmark {

enum class Probe : uintptr_t {
  kSearchGeneration = 1,
  kRows,         // that the list shows
  kEngineReady,  // a volume is searchable
  kTrayIconAdded,
  kDarkTheme,
  kDpi,
  kColumnWidth,  // argument: the column
  kClientWidth,
  kPaints,  // since the start
  kClientHeight,
  kHeaderTop,
  kScrollY,
  kSelectedRows,  // their number
  kFocusRow,
  kRenameEditor,  // its handle, 0 for none
  kRenameFocused,
  kShownGeneration,  // of the latest final results
  kFirstRowSize,     // in bytes; -1: not known
  kGdiObjects,       // that the process holds
  kUserObjects,      // as the system counts them; 0 under Wine
  kSearchBoxFocused,
  kShownByUser,
  kFirstSearchDeferred,
  kPathWidth,  // its width as fitted to the rows in view
  kSyncs,      // notices that the drives are all there, taken since the start
  kPixel,      // argument: x + 65536 * y of the client area; the colour in the back buffer
  kHoverRow,
  kTipShown,
  kEdgeCursor,      // the mouse shows that a column can be dragged
  kRangeUpdates,    // of the scrollbars, since the start
  kPaintedScrollY,  // the offset that the latest paint has shown
  kScrollX,
  kBarPosition,       // of a bar that stores the list's scroll state; argument: its id
  kBarLimit,          // the last position that it can take
  kRowPath,           // argument: the row; the CustomSizeHash of its path
  kSortedBy,          // the column, with 100 added where it descends; -1: none
  kFilterGeneration,  // raised each time that the filters are applied
  kFirstDay,          // of the custom time range, as year * 10,000 + month * 100 + day
  kLastDay,
  kEditorSelection,  // of the rename editor: first unit + 65536 * end; -1: no editor
  kAsksForMedia,     // the system may ask the user for a disk
  kIconSize,         // in pixels; argument: 0 in the title bar, 1 on the taskbar
  // What the program has done since its start.
  kPaintMessages,  // WM_PAINT, of all its windows
  kThreadsStarted,
  kDiskReads,        // calls that ask the disk for something
  kDiskWrites,       // calls that write to a file
  kAttributesSaved,  // 1: nothing is left for the next save of the attributes

  // What it holds.
  kHandles,  // under Wine, which does not count them, the number of the lowest free one
  kThreads,
  kPrivateKb,  // memory of the process alone
  kOwnTrims,   // of working sets, that the system has done: of this process, and of others
  kOtherTrims,
  kRecords,  // of all volumes, those of deleted files included

  // Of icons.
  kThumbnailsInView,  // rows in view that show their picture
  kRefusedInView,     // rows in view whose picture could not be had, a short while ago
  kThumbnailJobs,     // begun since the start
  kIsScrolling,       // 1 while the list counts as moving, and loads none

  // Of the made-up view, in a program that has it (kMadeUpViewVariable).
  kMadeUpScrollY,   // argument: 0 groups, 1 files; of the next ones too
  kMadeUpHoverRow,  // -1: none
  kMadeUpChosen,
  kMadeUpHeldBars,  // thumbs that are held
  kMadeUpScans,     // ticks of its timer
  kMadeUpDay,       // as the field for a day has told of it

  // Does something; the answer is 1.
  kSetTrayIcon = 100,   // argument: whether it counts as present
  kSwitchTheme,         // argument: times
  kRepaint,             // argument: times; the whole window, at once
  kTakePreset,          // argument: its index
  kChooseFromTray,      // argument: a command of the tray's menu
  kRequestExit,         // as the menu's "Exit", without the close that follows it
  kThrowInJob,          // an exception leaves a background job
  kCrash,               // of a background job
  kCrashWithoutLoader,  // of a job, while another thread keeps the loader's lock
  kCrashInWindow,       // of the interface thread
  kSetView,             // argument: 0 list, 1 small icons, 2 large icons
  kPostStaleResults,
  kSetSidebar,       // argument: whether the filter tags stand at the side
  kUnmapDrive,       // argument: the letter
  kMapDriveAgain,    // argument: the letter, to the folder of the start
  kMoveAtScale,      // argument: a dpi; suggests 700 x 560 at 40, 50
  kTellOfDrive,      // argument: event + 65536 * payload; the answer is the window's. Payload 0: none,
                     // 1: of another kind, else the mask of letters
  kFillRows,         // argument: how many rows; those of the index, over and over
  kShowRow,          // argument: the row to begin at
  kTimePaints,       // argument: times; the answer is the microseconds of one
  kTimeHovers,       // the same for two rows, and with their way to the screen
  kSelectRow,        // argument: the row, which need not be there
  kPaintAll,         // what waits for a paint, of all windows, pop-ups too
  kResetColors,      // to those of the theme
  kCycleScreen,      // argument: a Screen + 256 * times
  kDeleteRow,        // argument: the row, whose record counts as deleted from now on
  kSetHighContrast,  // argument: 0 as the system says, 1 on: white on black
  kShowIcons,        // argument: 0, rows have none, or 1
  kShowMadeUpView,   // argument: 1, or 0 for the search
};

// Environment: "T=C:\folder;U=C:\other": the letters that the program sees.
inline constexpr char kDrivesVariable[] = "QUILMARK_TEST_DRIVES";
inline constexpr char kChurnVariable[] = "QUILMARK_TEST_CHURN";  // changes a second on drive N:

// Environment: there at all: the made-up view is part of the program, behind the search.
inline constexpr char kMadeUpViewVariable[] = "QUILMARK_TEST_MADE_UP_VIEW";

// Environment: "long", "ideographs" or "right-to-left": all texts as such a language might have them.
inline constexpr char kLanguageVariable[] = "QUILMARK_TEST_LANGUAGE";

}  // namespace quilmark
