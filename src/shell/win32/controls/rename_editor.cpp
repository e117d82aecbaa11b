#include "shell/win32/controls/rename_editor.h"

#include <commctrl.h>

#include <optional>
#include <utility>

#include "config/palette.h"
#include "config/translate.h"
#include "config/window_settings.h"
#include "platform/files.h"
#include "platform/format.h"
#include "platform/win32/file_handle.h"
#include "platform/win32/wide.h"
#include "search/filtered_results.h"
#include "shell/actions/rename_index.h"
#include "shell/actions/rename_text.h"
#include "shell/search/filter_request.h"
#include "shell/search/rename_place.h"
#include "shell/search/row_text.h"
#include "shell/win32/controls/controls.h"
#include "shell/win32/controls/edit_keys.h"
#include "shell/win32/controls/edit_line.h"
#include "shell/win32/controls/window_text.h"

namespace quilmark {

namespace {

constexpr UINT_PTR kSubclass = 1;
constexpr size_t kLongestName = 511;
constexpr int kTextInset = 3;  // pixels at 96 dpi

struct Editing {
  MatchItem hit;
  RowText row;
  RenameTarget target;
  int64_t index = -1;  // of the row
};
Editing editing;
bool isCommitting = false;  // its message box takes the focus away, which must not commit once more

std::optional<Editing> FocusedRow(const AppState& app) {
  const auto rows = ShownResults();
  const int64_t focus = app.list.selection.focusRow;
  if (focus < 0 || static_cast<uint64_t>(focus) >= rows->size()) return std::nullopt;
  const MatchItem hit = (*rows)[static_cast<size_t>(focus)];
  const RowText row = TextOfRow(hit);
  const auto target = SeeForRename(hit);
  if (row.name.empty() || row.folder.empty() || !target) return std::nullopt;
  return Editing{hit, row, *target, focus};
}

// Other results may have come while the name was typed.
bool IsStillAt(int64_t index, const MatchItem& hit) {
  const auto rows = ShownResults();
  return static_cast<uint64_t>(index) < rows->size() && (*rows)[static_cast<size_t>(index)] == hit;
}

// Nothing has the name any more that the row had when its editor was opened.
bool IsGone() { return IsMissingPath(PathOfRow(editing.row)); }

void Close(MainWindow& window) {
  const HWND editor = std::exchange(window.renameEditor, nullptr);
  if (editor != nullptr) DestroyWindow(editor);
  window.InvalidateList();
}

void Ask(MainWindow& window, const std::u16string& text) {
  MessageBoxW(window.Handle(), Wide(text), Wide(TranslateOr(u"MsgTitle_Error", u"Error")),
              MB_OK | MB_ICONERROR);
  if (window.renameEditor == nullptr) return;  // what came meanwhile has closed it
  SetFocus(window.renameEditor);
  SendMessageW(window.renameEditor, EM_SETSEL, 0, -1);
}

void Fail(MainWindow& window, const std::u16string& why, CommitEnd end) {
  const FailedRename next = AfterFailedRename(IsGone(), end);
  if (next == FailedRename::kClose) return Close(window);
  if (next == FailedRename::kTell) Ask(window, why);
}

void Rename(AppState& app, MainWindow& window, const std::u16string& name, CommitEnd end) {
  RowText renamed = editing.row;
  renamed.name = name;
  const std::u16string from = LongPathOf(PathOfRow(editing.row)), to = LongPathOf(PathOfRow(renamed));
  const BOOL isMoved = MoveFileW(Wide(from), Wide(to));
  const DWORD error = GetLastError();
  if (!isMoved) {
    return Fail(window,
                FormatText(TranslateOr(u"Msg_RenameFailedFormat", u"Rename failed.\nError: %lu"),
                           uint32_t{error}),
                end);
  }
  RenameInIndex(editing.target, name);
  Close(window);
  if (end == CommitEnd::kByKey) SetFocus(window.Handle());
  FollowNewResults(KeepFiltered::kNo, HeldResults()->size());
  // Under a filter the rows change now, and numbers of rows mean others.
  const bool isFiltered = !CurrentFilterSettings().IsOff();
  if (isFiltered) ClearSelection(app.list.selection);
  if (isFiltered) RunFeature(app.features.refreshFilter);
  if (!isFiltered && end == CommitEnd::kByKey && IsStillAt(editing.index, editing.hit)) {
    SelectOnly(app.list.selection, editing.index);
  }
  window.RelayoutList();
  window.InvalidateList();
}

void Commit(AppState& app, MainWindow& window, CommitEnd end) {
  if (window.renameEditor == nullptr || isCommitting) return;
  isCommitting = true;
  std::u16string text = TextOfWindow(window.renameEditor, kLongestName);
  switch (CheckRename(editing.row.name, text)) {
    case RenameStep::kClose:
      Close(window);
      break;
    case RenameStep::kInvalid:
      Fail(window, TranslateOr(u"Msg_RenameInvalidChars", u"The name contains invalid characters."),
           end);
      break;
    case RenameStep::kRename:
      Rename(app, window, text, end);
      break;
  }
  isCommitting = false;
}

LRESULT CALLBACK EditorProcedure(HWND editor, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                 DWORD_PTR) {
  MainWindow& window = TheWindow();
  switch (message) {
    case WM_KEYDOWN:
      if (wParam == VK_RETURN || wParam == VK_TAB) return Commit(App(), window, CommitEnd::kByKey), 0;
      if (wParam == VK_ESCAPE) {
        Close(window);
        window.FocusSearchBox();
        return 0;
      }
      break;
    case WM_CHAR:
    case WM_PASTE:
      if (const auto taken = TakeEditMessage(editor, message, wParam, lParam)) return *taken;
      break;
    case WM_KILLFOCUS:
      Commit(App(), window, wParam == 0 ? CommitEnd::kByLeavingTheProgram : CommitEnd::kByLeaving);
      if (!IsWindow(editor)) return 0;
      break;
    case WM_PAINT: {
      const LRESULT result = DefSubclassProc(editor, message, wParam, lParam);
      FrameClient(editor, CurrentPalette.focusRing);
      return result;
    }
    case WM_NCDESTROY:
      RemoveWindowSubclass(editor, EditorProcedure, kSubclass);
      break;
    default:
      break;
  }
  return DefSubclassProc(editor, message, wParam, lParam);
}

}  // namespace

void OpenRenameEditor(AppState& app, MainWindow& window) {
  if (window.renameEditor != nullptr) {
    SetFocus(window.renameEditor);
    SendMessageW(window.renameEditor, EM_SETSEL, 0, -1);
    return;
  }
  const ListLayout layout = window.List();
  const auto focused = FocusedRow(app);
  if (layout.view != ViewMode::kList || !focused) return;
  const auto place =
      PlaceOfRenameEditor(layout, app.scrollY, app.scrollX, static_cast<uint64_t>(focused->index));
  if (!place) return;
  editing = *focused;
  window.renameEditor = CreateWindowExW(
      0, L"EDIT", Wide(editing.row.name), WS_CHILD | WS_VISIBLE | ES_AUTOHSCROLL | ES_MULTILINE,
      place->left, place->top, place->right - place->left, place->bottom - place->top, window.Handle(),
      nullptr, GetModuleHandleW(nullptr), nullptr);
  SendMessageW(window.renameEditor, WM_SETFONT,
               reinterpret_cast<WPARAM>(CurrentFonts().Of(FontRole::kList)), TRUE);
  CentreEditLine(window.renameEditor, kTextInset, kTextInset, app.systemDpi);
  SetWindowSubclass(window.renameEditor, EditorProcedure, kSubclass, 0);
  SetFocus(window.renameEditor);
  SendMessageW(window.renameEditor, EM_SETSEL, 0,
               static_cast<LPARAM>(SelectedStem(editing.row.name, editing.row.isDirectory)));
}

void MoveRenameEditor(const AppState& app, MainWindow& window) {
  const HWND editor = window.renameEditor;
  if (editor == nullptr) return;
  const Rect place = PlaceOfOpenRenameEditor(window.List(), app.scrollY, app.scrollX,
                                             static_cast<uint64_t>(editing.index));
  RECT former = {};
  GetClientRect(editor, &former);
  SetWindowPos(editor, nullptr, place.left, place.top, Width(place), Height(place),
               SWP_NOZORDER | SWP_NOACTIVATE);
  if (Width(place) != former.right) CentreEditLine(editor, kTextInset, kTextInset, app.systemDpi);
}

void CancelRenameEditor(MainWindow& window) {
  if (window.renameEditor != nullptr) Close(window);
}

}  // namespace quilmark
