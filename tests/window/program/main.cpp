// The desktop program with a way to ask for its state.
#include <windows.h>

#include <dbt.h>
#include <psapi.h>
#include <tlhelp32.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <stdexcept>
#include <string>

#include "config/ui_colors.h"
#include "config/window_settings.h"
#include "index/life/volume_life.h"
#include "index/tables/volume_index.h"
#include "platform/background.h"
#include "platform/clock.h"
#include "platform/drives.h"
#include "platform/known_folders.h"
#include "platform/utf.h"
#include "search/attributes/attr_cache.h"
#include "search/attributes/attr_cache_file.h"
#include "search/filter/filters.h"
#include "search/results/search_session.h"
#include "shell/app/tray_menu.h"
#include "shell/search/list_scroll.h"
#include "shell/search/row_icons.h"
#include "shell/search/row_text.h"
#include "shell/search/search_places.h"
#include "shell/search/view_mode.h"
#include "shell/view/window_ids.h"
#include "shell/win32/system/high_contrast.h"
#include "shell/win32/window/main_window.h"
#include "shell/win32/window/quilmark.h"
#include "shell/win32/window/window_paint.h"
#include "support/object_counts.h"
#include "window/program/churn_drive.h"
#include "window/program/cycles.h"
#include "window/program/made_up_probe.h"
#include "window/program/probe.h"
#include "window/program/pseudo_language.h"
#include "window/program/system_counts.h"

namespace quilmark {
namespace {

LRESULT SizeOfIcon(HICON icon) {
  ICONINFO info = {};
  if (!GetIconInfo(icon, &info)) return 0;
  const UniqueBitmap color(info.hbmColor), mask(info.hbmMask);
  BITMAP bitmap = {};
  GetObjectW(color.Get(), sizeof bitmap, &bitmap);
  return bitmap.bmWidth;
}

constexpr UINT kCrashMessage = WM_APP + 500;

std::u16string drives;  // of the environment

void MapDrives(std::u16string_view only = {}) {
  std::u16string_view rest = drives;
  while (rest.size() > 2) {
    const std::u16string_view one = rest.substr(0, rest.find(u';'));
    if (only.empty() || only[0] == one[0]) MapDrive(one[0], one.substr(2));
    rest.remove_prefix(std::min(one.size() + 1, rest.size()));
  }
}

// A thread takes the lock of the system's list of libraries, and keeps it.
void HoldLoader() {
  using Lock = LONG(NTAPI*)(ULONG, ULONG*, ULONG_PTR*);
  static const HANDLE held = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  const auto hold = [](void* lock) -> DWORD {
    ULONG state = 0;
    ULONG_PTR cookie = 0;
    reinterpret_cast<Lock>(lock)(0, &state, &cookie);
    SetEvent(held);
    Sleep(INFINITE);
    return 0;
  };
  const auto lock = GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "LdrLockLoaderLock");
  CreateThread(nullptr, 0, hold, reinterpret_cast<void*>(lock), 0, nullptr);
  WaitForSingleObject(held, INFINITE);
}

void Crash() {
  CountsOfSystem().refusesNames = true;  // the report comes from what was asked before
  volatile int* volatile nowhere = nullptr;
  *nowhere = 1;
}

LRESULT SizeOfFirstRow() {
  const auto rows = ShownResults();
  if (rows->empty()) return -1;
  const MatchItem& first = rows->front();
  const auto entry = PeekAttr(*first.volume, first.volume->records[first.index].frn);
  return entry ? entry->size : -1;
}

LRESULT PathOfShownRow(uint32_t row) {
  const auto rows = ShownResults();
  return row < rows->size() ? CustomSizeHash(PathOfRow(TextOfRow((*rows)[row]))) : 0;
}

LRESULT SortedBy() {
  const ChosenSort sort = CurrentSort();
  return sort.column + (sort.column < 0 || sort.ascending ? 0 : 100);
}

SCROLLINFO StateOfBar(const MainWindow& window, uint32_t id) {
  SCROLLINFO info = {};
  info.cbSize = sizeof info;
  info.fMask = SIF_ALL;
  GetScrollInfo(GetDlgItem(window.Handle(), static_cast<int>(id)), SB_CTL, &info);
  return info;
}

LRESULT SelectionOf(HWND editor) {
  if (editor == nullptr) return -1;
  DWORD begin = 0, end = 0;
  SendMessageW(editor, EM_GETSEL, reinterpret_cast<WPARAM>(&begin), reinterpret_cast<LPARAM>(&end));
  return begin + 65'536 * static_cast<LRESULT>(end);
}

LRESULT syncs = 0, paintMessages = 0;

// Those of UpdateWindow pass the queue by.
LRESULT CALLBACK SeeSent(int code, WPARAM isOfThread, LPARAM sent) {
  const bool isPaint = reinterpret_cast<const CWPSTRUCT*>(sent)->message == WM_PAINT;
  if (code == HC_ACTION && isPaint) ++paintMessages;
  return CallNextHookEx(nullptr, code, isOfThread, sent);
}

LRESULT CALLBACK SeePosted(int code, WPARAM isRemoved, LPARAM posted) {
  const UINT message = reinterpret_cast<const MSG*>(posted)->message;
  if (code == HC_ACTION && isRemoved == PM_REMOVE) {
    syncs += message == WM_VOLUMES_SYNCED ? 1 : 0;
    paintMessages += message == WM_PAINT ? 1 : 0;
  }
  return CallNextHookEx(nullptr, code, isRemoved, posted);
}

// Messages with a pointer do not pass from program to program.
void MoveAtScale(const MainWindow& window, uint32_t dpi) {
  const RECT rect = {40, 50, 740, 610};
  SendMessageW(window.Handle(), WM_DPICHANGED, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&rect));
}

LRESULT TellOfDrive(const MainWindow& window, WPARAM event, uint32_t payload) {
  DEV_BROADCAST_VOLUME volume = {};
  volume.dbcv_size = sizeof volume;
  volume.dbcv_devicetype = payload == 1 ? DBT_DEVTYP_PORT : DBT_DEVTYP_VOLUME;
  volume.dbcv_unitmask = payload;
  return SendMessageW(window.Handle(), WM_DEVICECHANGE, event,
                      payload == 0 ? 0 : reinterpret_cast<LPARAM>(&volume));
}

// Colours that no theme of ours has.
std::optional<SystemColors> HighContrastOfTest() {
  return SystemColors{.window = ColorOfHex(0x000000),
                      .windowText = ColorOfHex(0xFFFFFF),
                      .highlight = ColorOfHex(0x1AEBFF),
                      .highlightText = ColorOfHex(0x000000),
                      .buttonFace = ColorOfHex(0x000000),
                      .grayText = ColorOfHex(0x3FF23F),
                      .hotLight = ColorOfHex(0xFFFF00)};
}

void FillRows(AppState& app, MainWindow& window, uint32_t count) {
  auto rows = std::make_shared<ResultSet>();
  rows->reserve(count);
  VolumeIndex* const volume = CopyVolumes(Engine()).front();
  for (uint32_t i = 0; i < count; ++i) rows->push_back({volume, i % volume->records.size()});
  TheSearch().CurrentResults.Change([&rows](SearchResults& held) { held.rows = rows; });
  FollowNewResults(KeepFiltered::kNo, count);
  app.search.rows.scrollY = 0;
  window.CarryOut(RelayoutList(app.search, window.Context()));
}

BOOL CALLBACK PaintNow(HWND window, LPARAM) {
  if (IsWindowVisible(window)) RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
  return TRUE;
}

void DeleteRow(uint32_t row) {
  const auto rows = ShownResults();
  if (row >= rows->size()) return;
  const MatchItem& hit = (*rows)[row];
  const std::unique_lock lock(hit.volume->indexLock);
  MarkDeleted(*hit.volume, hit.index);
}

// Of the whole window, or of two rows that the mouse goes over, to the screen.
LRESULT TimePaints(const MainWindow& window, const Rect& place, uint32_t times) {
  const HDC buffer = window.backBuffer.Dc();
  const WindowDc screen(window.Handle());
  LARGE_INTEGER frequency, start, end;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&start);
  for (uint32_t i = 0; i < times; ++i) {
    PaintWindow(buffer, window, place);
    if (place != window.Context().client) {
      BitBlt(screen.Get(), place.left, place.top, Width(place), Height(place), buffer, place.left,
             place.top, SRCCOPY);
    }
  }
  GdiFlush();
  QueryPerformanceCounter(&end);
  return (end.QuadPart - start.QuadPart) * 1'000'000 / frequency.QuadPart / std::max(times, 1u);
}

Rect TwoRows() {
  const ListView& rows = App().search.rows;
  return Union(rows.PlaceOf(2), rows.PlaceOf(3));
}

LRESULT CountThreads() {
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 thread = {};
  thread.dwSize = sizeof thread;
  LRESULT count = 0;
  for (BOOL more = Thread32First(snapshot, &thread); more; more = Thread32Next(snapshot, &thread)) {
    if (thread.th32OwnerProcessID == GetCurrentProcessId()) ++count;
  }
  CloseHandle(snapshot);
  return count;
}

LRESULT PrivateKb() {
  PROCESS_MEMORY_COUNTERS_EX counters = {};
  K32GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                          sizeof counters);
  // Wine tells only what is in memory.
  const SIZE_T bytes = counters.PrivateUsage != 0 ? counters.PrivateUsage : counters.WorkingSetSize;
  return static_cast<LRESULT>(bytes / 1'024);
}

// Rows in view of whose picture that is known.
LRESULT CountThumbnails(const AppState& app, const std::function<bool(const KnownThumbnail&)>& isSo) {
  const auto rows = ShownResults();
  const RowSpan inView = app.search.rows.InView(rows->size());
  const int size = ScaleFor(app.systemDpi, IconSizeOf(ViewModeOfSettings()));
  LRESULT count = 0;
  for (uint64_t row = inView.first; row < inView.end; ++row) {
    const std::u16string path = PathOfRow(TextOfRow((*rows)[row]));
    count += isSo(app.search.icons->ThumbnailOf(path, size)) ? 1 : 0;
  }
  return count;
}

LRESULT CountRecords() {
  size_t count = 0;
  for (VolumeIndex* const volume : CopyVolumes(Engine())) {
    const std::shared_lock lock(volume->indexLock);
    count += volume->records.size();
  }
  return static_cast<LRESULT>(count);
}

LRESULT Do(AppState& app, MainWindow& window, Probe probe, uint32_t argument) {
  const std::u16string letter(1, static_cast<char16_t>(argument));
  switch (probe) {
    case Probe::kSetTrayIcon:
      app.trayIconAdded = argument != 0;
      break;
    case Probe::kSwitchTheme:
      for (uint32_t i = 0; i < argument; ++i) SwitchTheme(window, window);
      break;
    case Probe::kTakePreset:
      ApplyUiColorPreset(window, window, static_cast<int>(argument));
      break;
    case Probe::kRepaint:
      for (uint32_t i = 0; i < argument; ++i) {
        // The controls paint themselves with each theme.
        const UINT children = argument == 1 ? RDW_ALLCHILDREN : RDW_NOCHILDREN;
        RedrawWindow(window.Handle(), nullptr, nullptr, RDW_INVALIDATE | children | RDW_UPDATENOW);
      }
      GdiFlush();  // onto the screen, for a picture of it
      break;
    case Probe::kChooseFromTray:
      window.CarryOut(OnTrayChoice(app, window.Context(), static_cast<uint16_t>(argument)));
      break;
    case Probe::kRequestExit:
      app.exitRequested = true;
      break;
    case Probe::kThrowInJob:
      RunBackground("thrown_by_test", [] { throw std::runtime_error("on purpose"); });
      break;
    case Probe::kCrash:
      RunBackground("crashed_by_test", Crash);
      break;
    case Probe::kCrashWithoutLoader:
      RunBackground("crashed_by_test", [] {
        HoldLoader();  // no thread starts from here on
        Crash();
      });
      break;
    case Probe::kCrashInWindow:
      PostMessageW(window.Handle(), kCrashMessage, 0, 0);
      break;
    case Probe::kSetView:
      window.CarryOut(SetViewMode(app.search, window.Context(), static_cast<ViewMode>(argument)));
      break;
    case Probe::kSetSidebar:
      window.CarryOut(SetFilterLayout(app.search, window.Context(), argument != 0));
      break;
    case Probe::kPostStaleResults:
      PostIfAlive(window.Handle(), WM_SEARCH_RESULTS, TheSearch().CurrentResults.Number() - 1, 0);
      break;
    case Probe::kUnmapDrive:
      UnmapDrive(letter[0]);
      break;
    case Probe::kMapDriveAgain:
      MapDrives(letter);
      break;
    case Probe::kMoveAtScale:
      MoveAtScale(window, argument);
      break;
    case Probe::kTellOfDrive:
      return TellOfDrive(window, argument & 0xFFFF, argument >> 16);
    case Probe::kFillRows:
      FillRows(app, window, argument);
      break;
    case Probe::kShowRow:
      app.search.rows.scrollY = int64_t{argument} * app.search.rows.Grid().pitch;
      window.CarryOut(RelayoutList(app.search, window.Context()));
      break;
    case Probe::kSelectRow:
      SelectOnly(app.search.list.selection, argument);
      break;
    case Probe::kPaintAll:
      EnumThreadWindows(GetCurrentThreadId(), PaintNow, 0);
      GdiFlush();
      break;
    case Probe::kResetColors:
      ResetUiColors();
      RefreshColorsLive(window);
      break;
    case Probe::kCycleScreen:
      Cycle(app, window, static_cast<Screen>(argument & 0xFF), argument >> 8);
      break;
    case Probe::kDeleteRow:
      DeleteRow(argument);
      break;
    case Probe::kTimePaints:
      return TimePaints(window, window.Context().client, argument);
    case Probe::kTimeHovers:
      return TimePaints(window, TwoRows(), argument);
    case Probe::kShowIcons: {
      static IconCache* const icons = app.search.icons;
      app.search.icons = argument == 0 ? nullptr : icons;
      break;
    }
    case Probe::kSetHighContrast: {
      static const auto asTheSystemSays = readHighContrast;
      readHighContrast = argument == 0 ? asTheSystemSays : HighContrastOfTest;
      break;
    }
    default:
      return 0;
  }
  return 1;
}

LRESULT Ask(const AppState& app, MainWindow& window, Probe probe, uint32_t argument) {
  switch (probe) {
    case Probe::kSearchGeneration:
      return static_cast<LRESULT>(TheSearch().CurrentResults.Number());
    case Probe::kRows:
      return static_cast<LRESULT>(DisplayCount());
    case Probe::kEngineReady:
      return Engine().ready;
    case Probe::kTrayIconAdded:
      return app.trayIconAdded;
    case Probe::kAsksForMedia:
      return (GetErrorMode() & SEM_FAILCRITICALERRORS) == 0;
    case Probe::kDarkTheme:
      return CurrentWindowSettings.darkTheme;
    case Probe::kDpi:
      return app.systemDpi;
    case Probe::kColumnWidth:
      return CurrentWindowSettings.columnWidth.at(argument);
    case Probe::kClientWidth:
      return app.clientWidth;
    case Probe::kPaints:
      return static_cast<LRESULT>(window.paints);
    case Probe::kHeaderTop:
      return app.search.headerTop;
    case Probe::kClientHeight:
      return app.clientHeight;
    case Probe::kScrollY:
      return app.search.rows.scrollY;
    case Probe::kSelectedRows:
      return static_cast<LRESULT>(SelectedRows(app.search.list.selection, DisplayCount()).size());
    case Probe::kFocusRow:
      return app.search.list.selection.focusRow;
    case Probe::kRangeUpdates:
      return static_cast<LRESULT>(window.rangeUpdates);
    case Probe::kPaintedScrollY:
      return static_cast<LRESULT>(app.search.paintedScrollY);
    case Probe::kHoverRow:
      return app.search.rows.hoverRow;
    case Probe::kEdgeCursor:
      return GetCursor() == LoadCursorW(nullptr, IDC_SIZEWE);
    case Probe::kTipShown:
      return window.tip.IsShown();
    case Probe::kRenameEditor:
      return reinterpret_cast<LRESULT>(window.editor.Handle());
    case Probe::kRenameFocused:
      return window.editor.Handle() != nullptr && GetFocus() == window.editor.Handle();
    case Probe::kFirstRowSize:
      return SizeOfFirstRow();
    case Probe::kShownGeneration:
      return static_cast<LRESULT>(app.search.shownGeneration);
    case Probe::kGdiObjects:
      return CountGdiObjects();
    case Probe::kUserObjects:
      return GetGuiResources(GetCurrentProcess(), GR_USEROBJECTS);
    case Probe::kSearchBoxFocused:
      return GetFocus() == window.controls.HandleOf(kQueryBox);
    case Probe::kShownByUser:
      return app.shownByUser;
    case Probe::kFirstSearchDeferred:
      return app.firstSearchDeferred;
    case Probe::kPathWidth:
      return app.search.pathColumnWidth;
    case Probe::kSyncs:
      return syncs;
    case Probe::kScrollX:
      return app.search.rows.scrollX;
    case Probe::kBarPosition:
      return StateOfBar(window, argument).nPos;
    case Probe::kBarLimit: {
      const SCROLLINFO info = StateOfBar(window, argument);
      return info.nMax - static_cast<int>(info.nPage) + 1;
    }
    case Probe::kRowPath:
      return PathOfShownRow(argument);
    case Probe::kSortedBy:
      return SortedBy();
    case Probe::kFilterGeneration:
      return static_cast<LRESULT>(TheSearch().FilteredResults.Number());
    case Probe::kFirstDay:
      return CurrentWindowSettings.timeStart;
    case Probe::kLastDay:
      return CurrentWindowSettings.timeEnd;
    case Probe::kEditorSelection:
      return SelectionOf(window.editor.Handle());
    case Probe::kHandles:
      return CountHandles();
    case Probe::kPaintMessages:
      return paintMessages;
    case Probe::kThreadsStarted:
      return CountsOfSystem().threads;
    case Probe::kDiskReads:
      return CountsOfSystem().reads;
    case Probe::kDiskWrites:
      return CountsOfSystem().writes;
    case Probe::kOwnTrims:
      return CountsOfSystem().ownTrims;
    case Probe::kOtherTrims:
      return CountsOfSystem().otherTrims;
    case Probe::kAttributesSaved:
      return AttrCacheGeneration == TheAttrCacheFile().AttrSavedGeneration;
    case Probe::kIconSize:
      return SizeOfIcon(reinterpret_cast<HICON>(SendMessageW(window.Handle(), WM_GETICON, argument, 0)));
    case Probe::kThreads:
      return CountThreads();
    case Probe::kPrivateKb:
      return PrivateKb();
    case Probe::kRecords:
      return CountRecords();
    case Probe::kThumbnailsInView:
      return CountThumbnails(app, [](const KnownThumbnail& known) { return known.icon != nullptr; });
    case Probe::kRefusedInView:
      return CountThumbnails(app, [](const KnownThumbnail& known) { return known.isRefused; });
    case Probe::kIsScrolling:
      return IsScrolling(app.search, TickMs());
    case Probe::kThumbnailJobs:
      return static_cast<LRESULT>(TheSearch().thumbGeneration.Number());
    case Probe::kPixel:
      return GetPixel(window.backBuffer.Dc(), static_cast<int>(argument & 0xFFFF),
                      static_cast<int>(argument >> 16));
    default:
      return 0;
  }
}

std::optional<LRESULT> Answer(AppState& app, MainWindow& window, const Message& message) {
  if (message.number == kCrashMessage) Crash();
  if (message.number != WM_COPYDATA) return std::nullopt;
  const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(message.lParam);
  const auto probe = static_cast<Probe>(data.dwData);
  uint32_t argument = 0;
  if (data.cbData == sizeof argument) argument = *static_cast<const uint32_t*>(data.lpData);
  if (const auto answer = AskMadeUpView(app, window, probe, argument)) return answer;
  return probe >= Probe::kSetTrayIcon ? Do(app, window, probe, argument)
                                      : Ask(app, window, probe, argument);
}

}  // namespace
}  // namespace quilmark

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t* commandLine, int showCommand) {
  using namespace quilmark;
  drives = EnvironmentText(kDrivesVariable).value_or(u"");
  MapDrives();
  if (const auto churn = EnvironmentText(kChurnVariable)) {
    MapChurnDrive(static_cast<uint32_t>(std::stoul(ToUtf8(*churn))));
  }
  TakePseudoLanguage(EnvironmentText(kLanguageVariable).value_or(u""));
  if (EnvironmentText(kMadeUpViewVariable)) OfferMadeUpView(App());
  extraMessages = Answer;
  SetWindowsHookExW(WH_CALLWNDPROC, SeeSent, nullptr, GetCurrentThreadId());
  SetWindowsHookExW(WH_GETMESSAGE, SeePosted, nullptr, GetCurrentThreadId());
  ExitProcess(static_cast<UINT>(RunQuilmark(instance, commandLine, showCommand)));
}
