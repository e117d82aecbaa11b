// The one main window: its handles, and what the decisions of the interface ask of it.
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "shell/app/app_state.h"
#include "shell/app/window_end.h"
#include "shell/search/layout.h"
#include "shell/search/list_layout.h"
#include "shell/search/search_places.h"
#include "shell/view/view_context.h"
#include "shell/view/window_port.h"
#include "shell/win32/controls/filter_bar.h"
#include "shell/win32/controls/row_tip.h"
#include "shell/win32/gdi/back_buffer.h"
#include "shell/win32/gdi/gdi_fonts.h"
#include "shell/win32/system/app_icons.h"
#include "shell/win32/system/foreign_messages.h"
#include "shell/win32/system/tray_icon.h"
#include "shell/win32/window/window_look.h"

namespace quilmark {

inline constexpr wchar_t kMainWindowClass[] = L"QUILMARK_MAIN";

class MainWindow : public WindowPort, public WindowEndPort {
 public:
  HWND Handle() const { return window_; }

  void StartTimer(uint32_t id, uint32_t delayMs) override;
  void StopTimer(uint32_t id) override;
  void SetTitle(const std::u16string& title) override;
  void SetStatus(const std::u16string& text) override;
  std::u16string SearchBoxText() override;
  void ClearSearchBox() override;
  bool IsSearchBoxEnabled() override;
  void EnableSearchBox() override;
  void FocusSearchBox() override;
  void RebuildScopeBox() override;
  void CancelRename() override;
  void MoveRename() override;
  void RedrawTags() override;
  void InvalidateList() override;
  void Invalidate(const Rect& place) override;
  void RelayoutList() override;
  bool IsVisible() override;
  void Hide() override;
  void ShowAndRaise() override;
  void Destroy() override;
  TrayIconState AddOrUpdateTrayIcon() override;
  bool SystemShutsDown() override;
  void TrimSelf() override;
  void TrimSelfInJob() override;
  void TrimOthersInJob() override;

  std::optional<WindowPlacement> Placement() override;
  void CloseOtherWindows() override {}
  void RemoveTrayIcon() override;
  void UnregisterHotkeys() override;
  void ReleaseBrushes() override;
  void ReleaseIcons() override {}
  void ReleaseBackBuffer() override;
  void ReleaseFonts() override;
  void QuitMessageLoop() override;

  // Steps of the creation, in their order.
  void OpenBackBuffer(HWND window);
  void TakeScale();
  void MakeControls();
  void RegisterHotkeys();

  bool Resize(int width, int height);  // false where there is nothing to lay out
  void PlaceControls();
  void PlaceTags();  // again, as their captions have changed
  void Paint();
  void RemakeFonts();
  void RemakeIcons();
  void RecreateBackBuffer();
  ListLayout List() const { return PlaceList(App()); }
  SidebarLayout Sidebar() const { return PlaceSidebar(App()); }
  ViewContext Context() const;

  HWND searchBox = nullptr, scopeBox = nullptr, statusText = nullptr;
  // Hidden: they keep ranges and positions.
  HWND verticalBar = nullptr, horizontalBar = nullptr, sidebarBar = nullptr;
  HWND renameEditor = nullptr;
  RowTip tip;
  FilterBar filterBar;
  WindowBrushes brushes;
  UniqueBrush classBrush;  // of the window's class
  BackBuffer backBuffer;
  WindowIcons icons;
  TrayIcon tray;
  ForeignMessages foreign;
  int traySize = 0;           // pixels of its picture
  uint64_t paints = 0;        // since the start
  uint64_t rangeUpdates = 0;  // of the scrollbars, since the start
  int64_t paintedScrollY = 0;
  bool settingText = false;  // the program writes the search box: no search follows

 private:
  HWND window_ = nullptr;
};

MainWindow& TheWindow();

struct Message {
  HWND window = nullptr;
  UINT number = 0;
  WPARAM wParam = 0;
  LPARAM lParam = 0;
};

// Handles one message. Empty: not taken, DefWindowProcW follows.
using MessageHandler = std::optional<LRESULT> (*)(AppState& app, MainWindow& window,
                                                  const Message& message);

// Sees what the window itself does not take; null but in the program of the window tests.
extern MessageHandler extraMessages;

void RegisterMainWindowClass(MainWindow& window, HINSTANCE instance);
HWND OpenMainWindow(HINSTANCE instance, const RECT& rect, const wchar_t* title);

// Joins what the window asks for with the parts that do it.
void InstallFeatures(AppState& app, MainWindow& window);

// The handling of WM_CREATE.
void CreateWindowParts(AppState& app, MainWindow& window, HWND handle);

// Shows the rows in another view, from the top, and keeps the choice.
void SetViewMode(AppState& app, MainWindow& window, ViewMode view);

// Puts the filter categories to the side or into the bar, and keeps the choice.
void SetFilterLayout(AppState& app, MainWindow& window, bool sidebar);

}  // namespace quilmark
