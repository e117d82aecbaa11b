#include "shell/win32/system/system_menu.h"

#include <utility>

#include "platform/win32/system_function.h"
#include "platform/win32/wide.h"
#include "shell/win32/system/com.h"

namespace quilmark {

namespace {

constexpr UINT kFirstId = 1, kLastId = 0x7FFF;

struct MenuTraits {
  using Value = HMENU;
  static Value Empty() { return nullptr; }
  static void Close(Value menu) { DestroyMenu(menu); }
};
using UniqueMenu = Unique<MenuTraits>;

// The handlers of the menu that is open, in the newest form that they have; both empty without one.
struct OpenHandlers {
  UniqueCom<IContextMenu2> second;
  UniqueCom<IContextMenu3> third;
};
OpenHandlers openHandlers;

// While it lives, libraries are found also in the folders that handlers of other programs add for
// theirs. Never beside this program, where anybody may have put one, and never in the current folder.
class LibrariesOfHandlers {
 public:
  LibrariesOfHandlers() {
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32 | LOAD_LIBRARY_SEARCH_USER_DIRS);
  }
  ~LibrariesOfHandlers() { HardenLibrarySearch(); }
  LibrariesOfHandlers(const LibrariesOfHandlers&) = delete;
  LibrariesOfHandlers& operator=(const LibrariesOfHandlers&) = delete;
};

std::vector<UniqueItemIds> ParsePaths(const std::vector<std::u16string>& paths) {
  std::vector<UniqueItemIds> items;
  for (const std::u16string& path : paths) {
    ITEMIDLIST* item = nullptr;
    if (SUCCEEDED(SHParseDisplayName(Wide(path), nullptr, &item, 0, nullptr)) && item != nullptr) {
      items.emplace_back(item);
    }
  }
  return items;
}

// The menu of items that lie in one folder.
UniqueCom<IContextMenu> MenuOf(HWND owner, const std::vector<UniqueItemIds>& items) {
  if (items.empty()) return {};
  IShellFolder* found = nullptr;
  const HRESULT result = SHBindToParent(items.front().Get(), IID_PPV_ARGS(&found), nullptr);
  const auto folder = TakeCom(result, found);
  if (!folder) return {};
  std::vector<const ITEMIDLIST*> children;
  for (const UniqueItemIds& item : items) children.push_back(ILFindLastID(item.Get()));
  void* menu = nullptr;
  const HRESULT given = folder.Get()->GetUIObjectOf(owner, static_cast<UINT>(children.size()),
                                                    children.data(), IID_IContextMenu, nullptr, &menu);
  return TakeCom(given, static_cast<IContextMenu*>(menu));
}

OpenHandlers HandlersOf(IContextMenu* menu) {
  OpenHandlers handlers;
  IContextMenu3* third = nullptr;
  handlers.third = TakeCom(menu->QueryInterface(IID_PPV_ARGS(&third)), third);
  if (handlers.third) return handlers;
  IContextMenu2* second = nullptr;
  handlers.second = TakeCom(menu->QueryInterface(IID_PPV_ARGS(&second)), second);
  return handlers;
}

// The id that was chosen; 0 for none.
UINT ChooseFrom(HWND owner, POINT at, HMENU menu, IContextMenu* handler) {
  openHandlers = HandlersOf(handler);
  const int chosen = TrackPopupMenuEx(menu, TPM_RETURNCMD | TPM_RIGHTBUTTON, at.x, at.y, owner, nullptr);
  openHandlers = {};
  return static_cast<UINT>(chosen);
}

void Invoke(HWND owner, IContextMenu* handler, UINT id) {
  CMINVOKECOMMANDINFO info = {};
  info.cbSize = sizeof info;
  info.hwnd = owner;
  info.lpVerb = MAKEINTRESOURCEA(id - kFirstId);
  info.nShow = SW_SHOWNORMAL;
  handler->InvokeCommand(&info);
}

bool IsOfMenu(UINT message, WPARAM wParam) {
  if (message == WM_INITMENUPOPUP || message == WM_MENUCHAR) return true;
  // That of a control has its number.
  return (message == WM_DRAWITEM || message == WM_MEASUREITEM) && wParam == 0;
}

}  // namespace

void OpenSystemMenu(HWND owner, POINT at, const std::vector<std::u16string>& paths) {
  const ComApartment apartment;
  if (!apartment.IsOpen()) return;
  const LibrariesOfHandlers libraries;
  const auto items = ParsePaths(paths);
  const auto handler = MenuOf(owner, items);
  const UniqueMenu menu(CreatePopupMenu());
  if (!handler || !menu) return;
  if (FAILED(handler.Get()->QueryContextMenu(menu.Get(), 0, kFirstId, kLastId, CMF_NORMAL))) return;
  const UINT chosen = ChooseFrom(owner, at, menu.Get(), handler.Get());
  if (chosen >= kFirstId) Invoke(owner, handler.Get(), chosen);
}

std::optional<LRESULT> OfferToSystemMenu(UINT message, WPARAM wParam, LPARAM lParam) {
  if (!IsOfMenu(message, wParam)) return std::nullopt;
  LRESULT answer = 0;
  if (openHandlers.third &&
      SUCCEEDED(openHandlers.third.Get()->HandleMenuMsg2(message, wParam, lParam, &answer))) {
    return answer;
  }
  if (openHandlers.second &&
      SUCCEEDED(openHandlers.second.Get()->HandleMenuMsg(message, wParam, lParam))) {
    return 0;
  }
  return std::nullopt;
}

}  // namespace quilmark
